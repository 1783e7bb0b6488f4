#include "app/TabInfoPanel.h"

#include <QLabel>
#include <QVBoxLayout>

TabInfoPanel::TabInfoPanel(const QString &heading, const QString &note, QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("vantreoTabInfoPanel"));
    auto *layout = new QVBoxLayout(this);
    layout->addStretch(1);
    m_heading = new QLabel(heading, this);
    m_heading->setAlignment(Qt::AlignCenter);
    QFont headingFont = m_heading->font();
    headingFont.setPointSizeF(headingFont.pointSizeF() > 0 ? headingFont.pointSizeF() * 1.8 : 20.0);
    m_heading->setFont(headingFont);
    m_note = new QLabel(note, this);
    m_note->setAlignment(Qt::AlignCenter);
    m_note->setWordWrap(true);
    m_note->setStyleSheet(QStringLiteral("color: rgba(255, 255, 255, 150);"));
    layout->addWidget(m_heading);
    layout->addSpacing(8);
    layout->addWidget(m_note);
    layout->addStretch(2);
}

CanvasTabPanel::CanvasTabPanel(QWidget *parent)
    : TabInfoPanel(tr("Canvas"), tr("Canvas editing is not available in this version. "
                                     "The canvas is kept as loaded and saved with the project."),
                   parent)
{
    setObjectName(QStringLiteral("vantreoCanvasTabPanel"));
}

void CanvasTabPanel::setSettings(const CanvasTabSettings &settings)
{
    if (m_settings == settings)
        return;
    m_settings = settings;
    Q_EMIT settingsChanged();
}
