#include "app/GpuSelectionDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

GpuSelectionDialog::GpuSelectionDialog(const QList<GpuAdapterInfo> &adapters, const QString &storedKey,
                                       QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("vantreoGpuSelectionDialog"));
    setWindowTitle(tr("GPU Selection"));
    auto *layout = new QVBoxLayout(this);

    m_combo = new QComboBox(this);
    m_combo->setObjectName(QStringLiteral("vantreoGpuAdapterCombo"));
    m_combo->addItem(tr("Auto (High Performance GPU)"), QString::fromLatin1(kGpuAdapterAutoKey));
    for (const GpuAdapterInfo &adapter : adapters)
        m_combo->addItem(gpuAdapterLabel(adapter), gpuAdapterKey(adapter));
    layout->addWidget(m_combo);

    const QString key = storedKey.trimmed().isEmpty() ? QString::fromLatin1(kGpuAdapterAutoKey) : storedKey.trimmed();
    QStringList noteTexts;
    int selected = m_combo->findData(key);
    if (selected < 0) {
        m_combo->addItem(tr("Unavailable GPU"), key);
        selected = m_combo->count() - 1;
        noteTexts << tr("Selected GPU is unavailable");
    }
    m_combo->setCurrentIndex(selected);
    if (adapters.isEmpty())
        noteTexts << tr("No hardware GPU adapter was reported by the system. Auto mode will use the GPU fallback path.");
    noteTexts << tr("GPU selection requires restarting VantreoGuide. Already opened GPU previews keep using the current "
                    "GPU until the program restarts.");
    for (const QString &text : noteTexts) {
        auto *note = new QLabel(text, this);
        note->setWordWrap(true);
        m_notes << note;
        layout->addWidget(note);
    }

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    setMinimumWidth(460);
}

QString GpuSelectionDialog::selectedKey() const
{
    return m_combo->currentData().toString();
}

QStringList GpuSelectionDialog::notes() const
{
    QStringList texts;
    for (const QLabel *note : m_notes)
        texts << note->text();
    return texts;
}
