#pragma once

#include "common/GpuAdapter.h"

#include <QDialog>

class QComboBox;
class QLabel;

// "GPU Selection": automatic choice first, then one entry per adapter; a stored key
// that no present adapter has is kept as "Unavailable GPU" so accepting the dialog
// unchanged does not lose it.
class GpuSelectionDialog : public QDialog
{
    Q_OBJECT

public:
    GpuSelectionDialog(const QList<GpuAdapterInfo> &adapters, const QString &storedKey, QWidget *parent = nullptr);

    // The key of the chosen entry ("auto" for the automatic choice).
    QString selectedKey() const;
    QComboBox *adapterCombo() const { return m_combo; }
    // The notes shown under the list, in order.
    QStringList notes() const;

private:
    QComboBox *m_combo = nullptr;
    QList<QLabel *> m_notes;
};
