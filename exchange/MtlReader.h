#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

// The part of Wavefront material libraries the importer uses: each material's diffuse
// texture (map_Kd).
namespace vg::exchange {

// Material name -> map_Kd file as written (options removed, backslashes made forward).
QHash<QString, QString> readMtlDiffuseMaps(const QByteArray &data);

// The absolute path of the diffuse texture to show: that of the first material in `used`
// whose texture file exists, else that of any material of the libraries whose file
// exists; empty when none. Libraries and textures are looked up relative to `folder`.
QString diffuseTexturePath(const QString &folder, const QStringList &libraries, const QStringList &used);

} // namespace vg::exchange
