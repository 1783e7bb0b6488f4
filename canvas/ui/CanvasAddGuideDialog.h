#pragma once

#include "canvas/ui/CanvasTab.h"

#include <QDialog>

class QListWidget;

// "Add Guide": every guide tab with a preview ("No preview" before its first image), a check
// box each, "Select All" and "Add Selected".
class CanvasAddGuideDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CanvasAddGuideDialog(const QList<CanvasGuideTabSource> &sources, QWidget *parent = nullptr);
    // Indices into the sources of the checked guides, in list order.
    QList<int> chosen() const;
    QListWidget *list() const { return m_list; }

private:
    QListWidget *m_list = nullptr;
};
