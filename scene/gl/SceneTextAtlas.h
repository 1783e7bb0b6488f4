#pragma once

#include <QColor>
#include <QHash>
#include <QImage>
#include <QRect>
#include <QString>

#include <functional>

// One label bitmap of the text atlas, found again by its key.
struct DimensionTextAtlasEntry {
    QString key;
    QImage image;    // straight alpha, Format_RGBA8888
    QRect atlasRect; // set when the entry is placed in the atlas
    bool isValid() const { return !key.isEmpty() && !image.isNull(); }
};

// Label makers. Each renders its text once; the key tells whether the atlas has it already.
// "dimension|%1|%2": text and pixel size.
DimensionTextAtlasEntry dimensionTextAtlasEntry(const QString &text, int pixelSize = 14);
// "annotation|%1|%2|%3|%4": text, font scale, label scale x and y.
DimensionTextAtlasEntry annotationCommentAtlasEntry(const QString &text, double fontScale, double scaleX, double scaleY);
// "projector-name|%1"
DimensionTextAtlasEntry projectorNameAtlasEntry(const QString &name);
// "projector-dimension-green|%1": the green info text under a projector.
DimensionTextAtlasEntry projectorDimensionTextAtlasEntry(const QString &text);
// "viewport-fps|%1|%2": "FPS: %1" with the rate rounded to one decimal, and the pixel size.
DimensionTextAtlasEntry viewportFpsAtlasEntry(double framesPerSecond, int pixelSize = 14);
// "projector-camera-resolution|%1|%2": the resolution frame of a projector or camera, "%1x%2px".
DimensionTextAtlasEntry renderProjectorCameraResolutionFrame(int width, int height);

// Dimension label texts: "W %1mm", "H %1mm", "D %1mm", "C %1mm", "R %1mm" and "%1 %2mm".
QString dimensionLabelText(QChar letter, double millimetres);
QString namedDimensionLabelText(const QString &name, double millimetres);

// The image a projector without a source casts: its resolution "%1 x %2px" and
// "Throw Ratio %1" on a dark field with a frame and centre cross. Larger resolutions are
// drawn at a reduced size with the same proportions.
QImage projectorPlaceholderImage(int width, int height, double throwRatio);

// Packs entries into one RGBA image, shelf by shelf. When it is full it starts again with
// only the entries asked for since the last reset, so labels that went away are dropped.
class SceneTextAtlasPacker
{
public:
    explicit SceneTextAtlasPacker(int size = 1024);

    // The entry with that key, made by make() and placed when it is new; nullptr when the
    // label cannot fit even in an empty atlas.
    const DimensionTextAtlasEntry *ensure(const QString &key, const std::function<DimensionTextAtlasEntry()> &make);
    const DimensionTextAtlasEntry *find(const QString &key) const;
    const QImage &image() const { return m_image; }
    quint64 revision() const { return m_revision; }
    int size() const { return m_size; }
    void clear();

private:
    bool place(DimensionTextAtlasEntry &entry);

    int m_size;
    QImage m_image;
    QHash<QString, DimensionTextAtlasEntry> m_entries;
    int m_shelfX = 0;
    int m_shelfY = 0;
    int m_shelfHeight = 0;
    quint64 m_revision = 1;
};
