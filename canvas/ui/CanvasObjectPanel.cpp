#include "canvas/ui/CanvasObjectPanel.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr unsigned bit(CanvasObjectKind kind)
{
    return 1u << unsigned(kind);
}
constexpr unsigned kImages = bit(CanvasObjectKind::GuideImage) | bit(CanvasObjectKind::Picture);
constexpr unsigned kComment = bit(CanvasObjectKind::Comment);
constexpr unsigned kTextBox = bit(CanvasObjectKind::TextBox);
constexpr unsigned kAll = kImages | kComment | kTextBox;

QDoubleSpinBox *spinBox(double lo, double hi, double step, int decimals)
{
    auto *box = new QDoubleSpinBox;
    box->setRange(lo, hi);
    box->setSingleStep(step);
    box->setDecimals(decimals);
    box->setKeyboardTracking(false);
    return box;
}

void showColor(QPushButton *button, const QColor &color)
{
    button->setText(color.name());
    button->setStyleSheet(QStringLiteral("QPushButton { background: %1; color: %2; }")
                              .arg(color.name(), color.lightness() > 128 ? QStringLiteral("black") : QStringLiteral("white")));
}

} // namespace

CanvasObjectPanel::CanvasObjectPanel(ObjectEdit objectEdit, CanvasEdit canvasEdit, QWidget *parent)
    : QWidget(parent)
    , m_objectEdit(std::move(objectEdit))
    , m_canvasEdit(std::move(canvasEdit))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_objectBox = new QGroupBox(this);
    auto *objectLayout = new QVBoxLayout(m_objectBox);
    m_noSelection = new QLabel(m_objectBox);
    m_noSelection->setWordWrap(true);
    objectLayout->addWidget(m_noSelection);
    // One form per group of kinds; a group's page is hidden as a whole, which keeps the layout
    // of the visible rows exact.
    for (unsigned kinds : {kAll, kImages, kComment, kTextBox}) {
        auto *page = new QWidget(m_objectBox);
        auto *form = new QFormLayout(page);
        form->setContentsMargins(0, 0, 0, 0);
        objectLayout->addWidget(page);
        m_pages.append({kinds, page, form});
    }
    m_canvasBox = new QGroupBox(this);
    m_canvasForm = new QFormLayout(m_canvasBox);
    m_documentBox = new QGroupBox(this);
    m_documentForm = new QFormLayout(m_documentBox);
    layout->addWidget(m_objectBox);
    layout->addWidget(m_canvasBox);
    layout->addWidget(m_documentBox);
    addObjectRows();
    addCanvasRows();
    retranslateUi();
    showValues(nullptr, CanvasTabSettings());
}

template <typename Editor>
Editor *CanvasObjectPanel::addRow(QFormLayout *form, const char *text, Editor *editor, unsigned kinds,
                                  std::function<void()> refresh)
{
    Row row;
    row.text = text;
    row.editor = editor;
    row.kinds = kinds;
    row.refresh = std::move(refresh);
    if (kinds != 0) {
        for (const Page &page : m_pages) {
            if (page.kinds == kinds)
                form = page.form;
        }
    }
    if (qobject_cast<QCheckBox *>(editor)) {
        form->addRow(editor);
    } else {
        row.label = new QLabel;
        form->addRow(row.label, editor);
    }
    m_rows.append(row);
    return editor;
}

void CanvasObjectPanel::addObjectRows()
{
    auto text = [this](const char *label, const char *key, QString CanvasObjectSettings::*m, unsigned kinds) {
        auto *edit = addRow(nullptr, label, new QLineEdit, kinds, {});
        m_rows.last().refresh = [this, edit, m] { edit->setText(m_object.*m); };
        connect(edit, &QLineEdit::textEdited, this, [this, key, m](const QString &value) {
            m_objectEdit(QString::fromLatin1(key), [m, value](CanvasObjectSettings &o) { o.*m = value; });
        });
    };
    auto multiline = [this](const char *label, const char *key, QString CanvasObjectSettings::*m, unsigned kinds) {
        auto *edit = addRow(nullptr, label, new QPlainTextEdit, kinds, {});
        edit->setFixedHeight(70);
        m_rows.last().refresh = [this, edit, m] {
            if (edit->toPlainText() != m_object.*m)
                edit->setPlainText(m_object.*m);
        };
        connect(edit, &QPlainTextEdit::textChanged, this, [this, edit, key, m] {
            if (m_updating)
                return;
            const QString value = edit->toPlainText();
            m_objectEdit(QString::fromLatin1(key), [m, value](CanvasObjectSettings &o) { o.*m = value; });
        });
    };
    auto number = [this](const char *label, const char *key, double CanvasObjectSettings::*m, double lo, double hi,
                         double step, int decimals, unsigned kinds) {
        auto *box = addRow(nullptr, label, spinBox(lo, hi, step, decimals), kinds, {});
        m_rows.last().refresh = [this, box, m] { box->setValue(m_object.*m); };
        connect(box, &QDoubleSpinBox::valueChanged, this, [this, key, m](double value) {
            if (!m_updating)
                m_objectEdit(QString::fromLatin1(key), [m, value](CanvasObjectSettings &o) { o.*m = value; });
        });
    };
    auto check = [this](const char *label, const char *key, bool CanvasObjectSettings::*m, unsigned kinds) {
        auto *box = addRow(nullptr, label, new QCheckBox, kinds, {});
        m_rows.last().refresh = [this, box, m] { box->setChecked(m_object.*m); };
        connect(box, &QCheckBox::toggled, this, [this, key, m](bool value) {
            if (!m_updating)
                m_objectEdit(QString::fromLatin1(key), [m, value](CanvasObjectSettings &o) { o.*m = value; });
        });
    };
    auto choice = [this](const char *label, const char *key, int CanvasObjectSettings::*m, QList<const char *> items,
                         unsigned kinds) {
        auto *combo = addRow(nullptr, label, new QComboBox, kinds, {});
        for (const char *item : items)
            combo->addItem(QString::fromLatin1(item));
        combo->setProperty("vantreoItemTexts", QVariant::fromValue(QList<QByteArray>(items.begin(), items.end())));
        m_rows.last().refresh = [this, combo, m] { combo->setCurrentIndex(qBound(0, m_object.*m, combo->count() - 1)); };
        connect(combo, &QComboBox::currentIndexChanged, this, [this, key, m](int value) {
            if (!m_updating && value >= 0)
                m_objectEdit(QString::fromLatin1(key), [m, value](CanvasObjectSettings &o) { o.*m = value; });
        });
    };

    text(QT_TR_NOOP("Name"), "name", &CanvasObjectSettings::name, kAll);
    check(QT_TR_NOOP("Visible"), "visible", &CanvasObjectSettings::visible, kAll);
    number(QT_TR_NOOP("Opacity"), "opacity", &CanvasObjectSettings::opacity, 0, 1, 0.05, 2, kAll);
    number(QT_TR_NOOP("Position X"), "translate_x", &CanvasObjectSettings::translate_x, -1e7, 1e7, 10, 1, kAll);
    number(QT_TR_NOOP("Position Y"), "translate_y", &CanvasObjectSettings::translate_y, -1e7, 1e7, 10, 1, kAll);
    number(QT_TR_NOOP("Rotation"), "rotation", &CanvasObjectSettings::rotation, -180, 180, 1, 1, kAll);
    number(QT_TR_NOOP("Scale X"), "scale_x", &CanvasObjectSettings::scale_x, -100, 100, 0.05, 3, kAll);
    number(QT_TR_NOOP("Scale Y"), "scale_y", &CanvasObjectSettings::scale_y, -100, 100, 0.05, 3, kAll);
    number(QT_TR_NOOP("Crop left"), "crop_left", &CanvasObjectSettings::crop_left, 0, 1, 0.01, 3, kImages);
    number(QT_TR_NOOP("Crop top"), "crop_top", &CanvasObjectSettings::crop_top, 0, 1, 0.01, 3, kImages);
    number(QT_TR_NOOP("Crop right"), "crop_right", &CanvasObjectSettings::crop_right, 0, 1, 0.01, 3, kImages);
    number(QT_TR_NOOP("Crop bottom"), "crop_bottom", &CanvasObjectSettings::crop_bottom, 0, 1, 0.01, 3, kImages);
    check(QT_TR_NOOP("Show width"), "show_width_dimension", &CanvasObjectSettings::show_width_dimension, kImages);
    check(QT_TR_NOOP("Show height"), "show_height_dimension", &CanvasObjectSettings::show_height_dimension, kImages);
    multiline(QT_TR_NOOP("Comment"), "comment_text", &CanvasObjectSettings::comment_text, kComment);
    number(QT_TR_NOOP("Label offset X"), "comment_label_offset_x", &CanvasObjectSettings::comment_label_offset_x, -50, 50, 0.05, 2, kComment);
    number(QT_TR_NOOP("Label offset Y"), "comment_label_offset_y", &CanvasObjectSettings::comment_label_offset_y, -50, 50, 0.05, 2, kComment);
    number(QT_TR_NOOP("Circle size"), "comment_circle_scale", &CanvasObjectSettings::comment_circle_scale, 0.1, 50, 0.1, 2, kComment);
    number(QT_TR_NOOP("Font size"), "comment_font_scale", &CanvasObjectSettings::comment_font_scale, 0.1, 50, 0.1, 2, kComment);
    multiline(QT_TR_NOOP("Text"), "text_box_text", &CanvasObjectSettings::text_box_text, kTextBox);
    number(QT_TR_NOOP("Font size"), "text_box_font_scale", &CanvasObjectSettings::text_box_font_scale, 0.5, 200, 0.5, 1, kTextBox);
    check(QT_TR_NOOP("Bold"), "text_box_bold", &CanvasObjectSettings::text_box_bold, kTextBox);
    check(QT_TR_NOOP("Shadow"), "text_box_shadow", &CanvasObjectSettings::text_box_shadow, kTextBox);
    choice(QT_TR_NOOP("Alignment"), "text_box_alignment", &CanvasObjectSettings::text_box_alignment,
           {QT_TR_NOOP("Left"), QT_TR_NOOP("Center"), QT_TR_NOOP("Right")}, kTextBox);
    choice(QT_TR_NOOP("Vertical alignment"), "text_box_vertical_alignment", &CanvasObjectSettings::text_box_vertical_alignment,
           {QT_TR_NOOP("Top"), QT_TR_NOOP("Middle"), QT_TR_NOOP("Bottom")}, kTextBox);
    auto *color = addRow(nullptr, QT_TR_NOOP("Text color"), new QPushButton, kTextBox, {});
    m_rows.last().refresh = [this, color] { showColor(color, m_object.text_box_color); };
    connect(color, &QPushButton::clicked, this, [this] {
        const QColor chosen = QColorDialog::getColor(m_object.text_box_color, this, tr("Text color"));
        if (chosen.isValid())
            m_objectEdit(QStringLiteral("text_box_color"), [chosen](CanvasObjectSettings &o) { o.text_box_color = chosen; });
    });
}

void CanvasObjectPanel::addCanvasRows()
{
    auto check = [this](QFormLayout *form, const char *label, const char *key, bool CanvasTabSettings::*m) {
        auto *box = addRow(form, label, new QCheckBox, 0, {});
        m_rows.last().refresh = [this, box, m] { box->setChecked(m_canvasValues.*m); };
        connect(box, &QCheckBox::toggled, this, [this, key, m](bool value) {
            if (!m_updating)
                m_canvasEdit(QString::fromLatin1(key), [m, value](CanvasTabSettings &c) { c.*m = value; });
        });
    };
    auto color = [this](QFormLayout *form, const char *label, const char *key, QColor CanvasTabSettings::*m) {
        auto *button = addRow(form, label, new QPushButton, 0, {});
        m_rows.last().refresh = [this, button, m] { showColor(button, m_canvasValues.*m); };
        connect(button, &QPushButton::clicked, this, [this, key, m, label] {
            const QColor chosen = QColorDialog::getColor(m_canvasValues.*m, this, tr(label));
            if (chosen.isValid())
                m_canvasEdit(QString::fromLatin1(key), [m, chosen](CanvasTabSettings &c) { c.*m = chosen; });
        });
    };
    check(m_canvasForm, QT_TR_NOOP("Grid"), "grid_visible", &CanvasTabSettings::grid_visible);
    check(m_canvasForm, QT_TR_NOOP("Aspect ratio"), "ratio_visible", &CanvasTabSettings::ratio_visible);
    check(m_canvasForm, QT_TR_NOOP("Bounds dimensions (mm)"), "bounds_dimensions_visible", &CanvasTabSettings::bounds_dimensions_visible);
    check(m_canvasForm, QT_TR_NOOP("Bounds resolution (px)"), "bounds_resolution_visible", &CanvasTabSettings::bounds_resolution_visible);
    check(m_canvasForm, QT_TR_NOOP("Show title"), "title_visible", &CanvasTabSettings::title_visible);
    check(m_canvasForm, QT_TR_NOOP("Snap"), "snap", &CanvasTabSettings::snap);
    color(m_canvasForm, QT_TR_NOOP("Background"), "background_color", &CanvasTabSettings::background_color);

    check(m_documentForm, QT_TR_NOOP("Show document title"), "document_title_visible", &CanvasTabSettings::document_title_visible);
    check(m_documentForm, QT_TR_NOOP("Use custom title"), "document_custom_title_enabled",
          &CanvasTabSettings::document_custom_title_enabled);
    auto *title = addRow(m_documentForm, QT_TR_NOOP("Custom title"), new QLineEdit, 0, {});
    title->setObjectName(QStringLiteral("vantreoCanvasDocumentTitle"));
    m_rows.last().refresh = [this, title] { title->setText(m_canvasValues.document_custom_title); };
    connect(title, &QLineEdit::textEdited, this, [this](const QString &value) {
        m_canvasEdit(QStringLiteral("document_custom_title"), [value](CanvasTabSettings &c) { c.document_custom_title = value; });
    });
    color(m_documentForm, QT_TR_NOOP("Title band"), "document_title_background_color",
          &CanvasTabSettings::document_title_background_color);
}

void CanvasObjectPanel::showValues(const CanvasObjectSettings *object, const CanvasTabSettings &canvas)
{
    m_updating = true;
    m_hasObject = object != nullptr;
    if (object)
        m_object = *object;
    m_canvasValues = canvas;
    const unsigned kind = object ? bit(canvasObjectKind(*object)) : 0;
    m_noSelection->setVisible(!object);
    for (const Page &page : m_pages)
        page.widget->setVisible((page.kinds & kind) != 0);
    for (const Row &row : m_rows) {
        if (row.kinds == 0 || (row.kinds & kind) != 0)
            row.refresh();
    }
    m_updating = false;
}

void CanvasObjectPanel::retranslateUi()
{
    m_objectBox->setTitle(tr("Object"));
    m_canvasBox->setTitle(tr("Canvas"));
    m_documentBox->setTitle(tr("Document title"));
    m_noSelection->setText(tr("Select an object to edit its properties."));
    for (const Row &row : m_rows) {
        if (row.label)
            row.label->setText(tr(row.text));
        else if (auto *box = qobject_cast<QCheckBox *>(row.editor))
            box->setText(tr(row.text));
        if (auto *combo = qobject_cast<QComboBox *>(row.editor)) {
            const QList<QByteArray> items = combo->property("vantreoItemTexts").value<QList<QByteArray>>();
            for (int i = 0; i < items.size() && i < combo->count(); ++i)
                combo->setItemText(i, tr(items[i].constData()));
        }
    }
}

void CanvasObjectPanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslateUi();
    QWidget::changeEvent(event);
}
