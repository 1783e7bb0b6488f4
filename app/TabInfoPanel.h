#pragma once

#include "canvas/CanvasTabSettings.h"

#include <QWidget>

class QLabel;

// Content of a tab whose editor is not part of this build: it names the tab kind and
// says so, instead of showing controls that would do nothing.
class TabInfoPanel : public QWidget
{
    Q_OBJECT

public:
    TabInfoPanel(const QString &heading, const QString &note, QWidget *parent = nullptr);

private:
    QLabel *m_heading = nullptr;
    QLabel *m_note = nullptr;
};

// A canvas tab until canvas editing arrives: it keeps the tab's settings exactly as
// they were loaded or copied, so saving a project writes them back unchanged.
class CanvasTabPanel : public TabInfoPanel
{
    Q_OBJECT

public:
    explicit CanvasTabPanel(QWidget *parent = nullptr);

    CanvasTabSettings settings() const { return m_settings; }
    void setSettings(const CanvasTabSettings &settings);

Q_SIGNALS:
    void settingsChanged();

private:
    CanvasTabSettings m_settings;
};
