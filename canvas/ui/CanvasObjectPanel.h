#pragma once

#include "canvas/CanvasGeometry.h"

#include <QString>
#include <QVector>
#include <QWidget>

#include <functional>

class QFormLayout;
class QGroupBox;
class QLabel;

// The property editors of a canvas tab: the selected object's fields (the rows its kind uses)
// and the canvas's own settings. Every change is handed to the tab as an edit function, so the
// tab keeps the history.
class CanvasObjectPanel : public QWidget
{
    Q_OBJECT

public:
    using ObjectEdit = std::function<void(const QString &key, const std::function<void(CanvasObjectSettings &)> &)>;
    using CanvasEdit = std::function<void(const QString &key, const std::function<void(CanvasTabSettings &)> &)>;

    CanvasObjectPanel(ObjectEdit objectEdit, CanvasEdit canvasEdit, QWidget *parent = nullptr);

    // Shows the object's values (nullptr: no selection) and the canvas settings.
    void showValues(const CanvasObjectSettings *object, const CanvasTabSettings &canvas);

protected:
    void changeEvent(QEvent *event) override;

private:
    struct Row {
        QLabel *label = nullptr;
        const char *text = nullptr;
        QWidget *editor = nullptr;
        std::function<void()> refresh;
        unsigned kinds = 0; // bit per CanvasObjectKind; 0 for canvas rows
    };

    template <typename Editor>
    Editor *addRow(QFormLayout *form, const char *text, Editor *editor, unsigned kinds, std::function<void()> refresh);
    void addObjectRows();
    void addCanvasRows();
    void retranslateUi();

    ObjectEdit m_objectEdit;
    CanvasEdit m_canvasEdit;
    QGroupBox *m_objectBox = nullptr;
    QGroupBox *m_canvasBox = nullptr;
    QGroupBox *m_documentBox = nullptr;
    struct Page {
        unsigned kinds = 0;
        QWidget *widget = nullptr;
        QFormLayout *form = nullptr;
    };
    QVector<Page> m_pages;
    QFormLayout *m_canvasForm = nullptr;
    QFormLayout *m_documentForm = nullptr;
    QLabel *m_noSelection = nullptr;
    QVector<Row> m_rows;
    CanvasObjectSettings m_object;
    CanvasTabSettings m_canvasValues;
    bool m_hasObject = false;
    bool m_updating = false;
};
