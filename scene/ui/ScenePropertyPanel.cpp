#include "scene/ui/ScenePropertyPanel.h"

#include "scene/ui/SceneVideoSourceControls.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QEvent>
#include <QPoint>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include <cmath>

namespace {

constexpr double kMaxMillimetres = 100000.0;

bool isSurface(int kind)
{
    switch (kind) {
    case KindPlane:
    case KindCirclePlane:
    case KindCylinderWall:
    case KindCurvedSurface:
    case KindLShape:
    case KindCurve:
    case KindGuide:
    case KindImage:
    case KindObjMesh:
    case KindDxfMesh:
    case KindPerson:
        return true;
    default:
        return false;
    }
}

bool takesTexture(int kind)
{
    return isSurface(kind) && kind != KindPerson && kind != KindDxfMesh;
}

// Generated shapes keep half extents in metres; the panel shows whole sizes in millimetres.
double sizeFactor(const GuideObject &object)
{
    if (object.guide_index == KindCurvedSurface && curvedShapeOf(object) != CurvedShape::Horseshoe)
        return 1000.0;
    return 2000.0;
}

} // namespace

ScenePropertyPanel::ScenePropertyPanel(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("vantreoScenePropertyPanel"));
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto *scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    auto *host = new QWidget(scroll);
    m_layout = new QVBoxLayout(host);
    m_layout->setContentsMargins(6, 6, 6, 6);
    m_emptyLabel = new QLabel(tr("Select an object to edit its properties."), host);
    m_emptyLabel->setWordWrap(true);
    m_layout->addWidget(m_emptyLabel);
    m_layout->addStretch(1);
    scroll->setWidget(host);
    outer->addWidget(scroll);
}

void ScenePropertyPanel::setGuideNames(const QStringList &names)
{
    if (names == m_guideNames)
        return;
    m_guideNames = names;
    m_builtKind = -2; // the guide choosers list the guides: build them anew
    if (m_index >= 0)
        rebuild();
    refresh();
}

void ScenePropertyPanel::setGuideObjects(const QList<QPair<int, QString>> &objects)
{
    if (objects == m_guideObjects)
        return;
    m_guideObjects = objects;
    m_builtKind = -2;
    if (m_index >= 0)
        setObject(m_index, &m_object);
}

void ScenePropertyPanel::setGuideArrays(const QVector<GuideArraySlices> &arrays)
{
    if (arrays == m_guideArrays)
        return;
    m_guideArrays = arrays;
    refresh(); // the slice chooser lists the array of the projector's guide
}

void ScenePropertyPanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange && m_emptyLabel) {
        // Every label is built with tr(): build them again in the new language.
        m_emptyLabel->setText(tr("Select an object to edit its properties."));
        if (m_index >= 0) {
            rebuild();
            refresh();
        }
    }
    QWidget::changeEvent(event);
}

void ScenePropertyPanel::setObject(int index, const GuideObject *object)
{
    m_index = object ? index : -1;
    if (object)
        m_object = *object;
    const int kind = m_index >= 0 ? m_object.guide_index : -1;
    // The curved family changes its controls with its shape.
    const int shapeKey = kind == KindCurvedSurface ? 100 + int(curvedShapeOf(m_object)) : kind;
    if (shapeKey != m_builtKind || m_index != m_builtIndex) {
        m_builtKind = shapeKey;
        m_builtIndex = m_index;
        rebuild();
    }
    refresh();
}

void ScenePropertyPanel::rebuild()
{
    m_refreshers.clear();
    if (m_content) {
        m_content->hide();
        m_content->deleteLater();
        m_content = nullptr;
    }
    m_emptyLabel->setVisible(m_index < 0);
    if (m_index < 0)
        return;
    m_content = new QWidget(m_emptyLabel->parentWidget());
    m_contentLayout = new QVBoxLayout(m_content);
    m_contentLayout->setContentsMargins(0, 0, 0, 0);
    m_layout->insertWidget(1, m_content);

    buildCommon();
    buildTransform();
    buildShape();
    if (m_object.hasLens()) {
        buildProjector();
        if (m_object.isProjector())
            buildFootprint();
    }
    buildDisplay();
    if (takesTexture(m_object.guide_index))
        buildTexture();
    m_content->show();
}

void ScenePropertyPanel::refresh()
{
    if (m_index < 0)
        return;
    m_refreshing = true;
    for (const auto &refresher : m_refreshers)
        refresher(m_object);
    m_refreshing = false;
}

void ScenePropertyPanel::commit(const std::function<void(GuideObject &)> &change)
{
    if (m_refreshing || m_index < 0)
        return;
    GuideObject edited = m_object;
    change(edited);
    if (edited == m_object)
        return;
    m_object = edited;
    Q_EMIT objectEdited(m_index, edited);
}

QFormLayout *ScenePropertyPanel::addGroup(const QString &title)
{
    auto *box = new QGroupBox(title, m_content);
    auto *form = new QFormLayout(box);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setContentsMargins(6, 6, 6, 6);
    m_contentLayout->addWidget(box);
    return form;
}

void ScenePropertyPanel::addNumber(QFormLayout *form, const QString &label, Getter get, Setter set,
                                   double min, double max, int decimals, double step,
                                   const QString &suffix)
{
    auto *spin = new QDoubleSpinBox(form->parentWidget());
    spin->setRange(min, max);
    spin->setDecimals(decimals);
    spin->setSingleStep(step);
    spin->setKeyboardTracking(false); // one edit (and one undo step) per committed value
    spin->setAccelerated(true);
    if (!suffix.isEmpty())
        spin->setSuffix(QLatin1Char(' ') + suffix);
    form->addRow(label, spin);
    m_refreshers.push_back([spin, get](const GuideObject &o) {
        const QSignalBlocker block(spin);
        spin->setValue(get(o));
    });
    connect(spin, &QDoubleSpinBox::valueChanged, this,
            [this, set](double value) { commit([&](GuideObject &o) { set(o, value); }); });
}

void ScenePropertyPanel::addFloat(QFormLayout *form, const QString &label, float GuideObject::*member,
                                  double min, double max, int decimals, double step,
                                  const QString &suffix)
{
    addNumber(
        form, label, [member](const GuideObject &o) { return double(o.*member); },
        [member](GuideObject &o, double v) { o.*member = float(v); }, min, max, decimals, step, suffix);
}

void ScenePropertyPanel::addInt(QFormLayout *form, const QString &label, int GuideObject::*member,
                                int min, int max, const QString &suffix)
{
    auto *spin = new QSpinBox(form->parentWidget());
    spin->setRange(min, max);
    spin->setKeyboardTracking(false);
    if (!suffix.isEmpty())
        spin->setSuffix(QLatin1Char(' ') + suffix);
    form->addRow(label, spin);
    m_refreshers.push_back([spin, member](const GuideObject &o) {
        const QSignalBlocker block(spin);
        spin->setValue(o.*member);
    });
    connect(spin, &QSpinBox::valueChanged, this,
            [this, member](int value) { commit([&](GuideObject &o) { o.*member = value; }); });
}

void ScenePropertyPanel::addBool(QFormLayout *form, const QString &label, bool GuideObject::*member)
{
    auto *check = new QCheckBox(label, form->parentWidget());
    form->addRow(check);
    m_refreshers.push_back([check, member](const GuideObject &o) {
        const QSignalBlocker block(check);
        check->setChecked(o.*member);
    });
    connect(check, &QCheckBox::toggled, this,
            [this, member](bool on) { commit([&](GuideObject &o) { o.*member = on; }); });
}

void ScenePropertyPanel::addChoice(QFormLayout *form, const QString &label, int GuideObject::*member,
                                   const QStringList &items, int firstValue)
{
    auto *combo = new QComboBox(form->parentWidget());
    for (int i = 0; i < items.size(); ++i)
        combo->addItem(items[i], firstValue + i);
    form->addRow(label, combo);
    m_refreshers.push_back([combo, member](const GuideObject &o) {
        const QSignalBlocker block(combo);
        combo->setCurrentIndex(std::max(0, combo->findData(o.*member)));
    });
    connect(combo, &QComboBox::activated, this, [this, combo, member](int row) {
        const int value = combo->itemData(row).toInt();
        commit([&](GuideObject &o) { o.*member = value; });
    });
}

void ScenePropertyPanel::addText(QFormLayout *form, const QString &label, QString GuideObject::*member)
{
    auto *edit = new QLineEdit(form->parentWidget());
    form->addRow(label, edit);
    m_refreshers.push_back([edit, member](const GuideObject &o) {
        if (edit->text() != o.*member) {
            const QSignalBlocker block(edit);
            edit->setText(o.*member);
        }
    });
    connect(edit, &QLineEdit::editingFinished, this, [this, edit, member] {
        const QString text = edit->text();
        commit([&](GuideObject &o) { o.*member = text; });
    });
}

void ScenePropertyPanel::addFile(QFormLayout *form, const QString &label, QString GuideObject::*member,
                                 const QString &filter)
{
    auto *row = new QWidget(form->parentWidget());
    auto *h = new QHBoxLayout(row);
    h->setContentsMargins(0, 0, 0, 0);
    auto *edit = new QLineEdit(row);
    edit->setPlaceholderText(tr("No file"));
    auto *browse = new QPushButton(tr("Browse..."), row);
    auto *clear = new QPushButton(tr("Clear"), row);
    h->addWidget(edit, 1);
    h->addWidget(browse);
    h->addWidget(clear);
    form->addRow(label, row);
    m_refreshers.push_back([edit, member](const GuideObject &o) {
        if (edit->text() != o.*member) {
            const QSignalBlocker block(edit);
            edit->setText(o.*member);
        }
    });
    connect(edit, &QLineEdit::editingFinished, this, [this, edit, member] {
        const QString text = edit->text().trimmed();
        commit([&](GuideObject &o) { o.*member = text; });
    });
    connect(browse, &QPushButton::clicked, this, [this, edit, member, filter, label] {
        const QString start = edit->text().isEmpty() ? QString() : QFileInfo(edit->text()).absolutePath();
        const QString path = QFileDialog::getOpenFileName(this, label, start, filter);
        if (path.isEmpty())
            return;
        edit->setText(path);
        commit([&](GuideObject &o) { o.*member = path; });
    });
    connect(clear, &QPushButton::clicked, this, [this, edit, member] {
        edit->clear();
        commit([&](GuideObject &o) { o.*member = QString(); });
    });
}

void ScenePropertyPanel::addColor(QFormLayout *form, const QString &label, QColor GuideObject::*member)
{
    auto *button = new QPushButton(form->parentWidget());
    button->setMinimumWidth(80);
    form->addRow(label, button);
    m_refreshers.push_back([button, member](const GuideObject &o) {
        const QColor c = o.*member;
        button->setText(c.name());
        button->setStyleSheet(QStringLiteral("background-color: %1; color: %2;")
                                  .arg(c.name(), c.lightness() > 128 ? QStringLiteral("#000000")
                                                                     : QStringLiteral("#ffffff")));
    });
    connect(button, &QPushButton::clicked, this, [this, member, label] {
        const QColor chosen = QColorDialog::getColor(m_object.*member, this, label);
        if (chosen.isValid())
            commit([&](GuideObject &o) { o.*member = chosen; });
    });
}

void ScenePropertyPanel::addGuideChoice(QFormLayout *form, const QString &label, int GuideObject::*member)
{
    QList<QPair<int, QString>> entries;
    for (int i = 0; i < m_guideNames.size(); ++i)
        entries.append({i, m_guideNames.at(i)});
    addIndexedChoice(form, label, member, entries, tr("Guide %1 (missing)"));
}

void ScenePropertyPanel::addIndexedChoice(QFormLayout *form, const QString &label, int GuideObject::*member,
                                          const QList<QPair<int, QString>> &entries, const QString &missingText)
{
    auto *combo = new QComboBox(form->parentWidget());
    combo->addItem(tr("None"), -1);
    for (const auto &entry : entries)
        combo->addItem(entry.second, entry.first);
    form->addRow(label, combo);
    m_refreshers.push_back([combo, member, missingText](const GuideObject &o) {
        const QSignalBlocker block(combo);
        int row = combo->findData(o.*member);
        if (row < 0) {
            // A source that is not there any more still shows which one it was.
            combo->addItem(missingText.arg(o.*member + 1), o.*member);
            row = combo->count() - 1;
        }
        combo->setCurrentIndex(row);
    });
    connect(combo, &QComboBox::activated, this, [this, combo, member](int row) {
        const int value = combo->itemData(row).toInt();
        commit([&](GuideObject &o) { o.*member = value; });
    });
}

void ScenePropertyPanel::buildCommon()
{
    QFormLayout *form = addGroup(tr("Object"));
    addText(form, tr("Name"), &GuideObject::name);
    addBool(form, tr("Visible"), &GuideObject::visible);
    addNumber(
        form, tr("Opacity"), [](const GuideObject &o) { return double(o.object_opacity) * 100.0; },
        [](GuideObject &o, double v) { o.object_opacity = float(v / 100.0); }, 0, 100, 0, 5,
        QStringLiteral("%"));
}

void ScenePropertyPanel::buildTransform()
{
    QFormLayout *form = addGroup(tr("Transform"));
    addFloat(form, tr("Position X"), &GuideObject::translate_x, -100000, 100000, 3, 0.01, QStringLiteral("m"));
    addFloat(form, tr("Position Y"), &GuideObject::translate_y, -100000, 100000, 3, 0.01, QStringLiteral("m"));
    addFloat(form, tr("Position Z"), &GuideObject::translate_z, -100000, 100000, 3, 0.01, QStringLiteral("m"));
    addFloat(form, tr("Rotation X"), &GuideObject::rotate_x, -3600, 3600, 2, 1, QStringLiteral("°"));
    addFloat(form, tr("Rotation Y"), &GuideObject::rotate_y, -3600, 3600, 2, 1, QStringLiteral("°"));
    addFloat(form, tr("Rotation Z"), &GuideObject::rotate_z, -3600, 3600, 2, 1, QStringLiteral("°"));
    const int kind = m_object.guide_index;
    if (kind == KindCurve || kind == KindDistanceMeasure || kind == KindComment)
        return;
    const double factor = sizeFactor(m_object);
    const QString labels[3] = {tr("Size X"), tr("Size Y"), tr("Size Z")};
    float GuideObject::*members[3] = {&GuideObject::scale_x, &GuideObject::scale_y, &GuideObject::scale_z};
    for (int i = 0; i < 3; ++i) {
        float GuideObject::*member = members[i];
        addNumber(
            form, labels[i], [member, factor](const GuideObject &o) { return std::round(o.*member * factor); },
            [member, factor](GuideObject &o, double v) { o.*member = float(v / factor); }, 1,
            kMaxMillimetres, 0, 10, QStringLiteral("mm"));
    }
}

void ScenePropertyPanel::buildDisplay()
{
    QFormLayout *form = addGroup(tr("Display"));
    const int kind = m_object.guide_index;
    if (isSurface(kind) || m_object.hasLens()) {
        addBool(form, tr("Shading"), &GuideObject::show_shading);
        addBool(form, tr("Wireframe"), &GuideObject::show_wireframe);
        addFloat(form, tr("Wireframe thickness"), &GuideObject::wireframe_thickness, 0, 20, 1, 0.5, tr("px"));
    }
    if (isSurface(kind)) {
        addBool(form, tr("Flip normals"), &GuideObject::flip_normals);
        addColor(form, tr("Mesh colour"), &GuideObject::mesh_color);
    }
    addBool(form, tr("Show dimensions"), &GuideObject::show_dimensions);
    switch (kind) {
    case KindDistanceMeasure:
        addBool(form, tr("Distance"), &GuideObject::show_distance_dimension);
        break;
    case KindCirclePlane:
    case KindCurvedSurface:
    case KindCylinderWall:
        addBool(form, tr("Width"), &GuideObject::show_width_dimension);
        addBool(form, tr("Height"), &GuideObject::show_height_dimension);
        addBool(form, tr("Radius"), &GuideObject::show_radius_dimension);
        addBool(form, tr("Circumference"), &GuideObject::show_circumference_dimension);
        if (kind == KindCurvedSurface)
            addBool(form, tr("Depth"), &GuideObject::show_depth_dimension);
        break;
    default:
        addBool(form, tr("Width"), &GuideObject::show_width_dimension);
        addBool(form, tr("Height"), &GuideObject::show_height_dimension);
        addBool(form, tr("Depth"), &GuideObject::show_depth_dimension);
        break;
    }
}

void ScenePropertyPanel::buildTexture()
{
    QFormLayout *form = addGroup(tr("Texture"));
    addBool(form, tr("Show texture"), &GuideObject::texture_visible);
    addGuideChoice(form, tr("Guide tab"), &GuideObject::texture_guide_index);
    addFile(form, tr("Image file"), &GuideObject::texture_file_path,
            tr("Images and movies (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp *.mp4 *.mov *.avi *.mkv);;All files (*)"));
    addNumber(
        form, tr("Texture rotation"), [](const GuideObject &o) { return double(o.uv_rotation) * 90.0; },
        [](GuideObject &o, double v) { o.uv_rotation = float(std::round(v / 90.0)); }, 0, 270, 0, 90,
        QStringLiteral("°"));
    addVideoSourceRows(form, false);
}

void ScenePropertyPanel::addViewOutputRows(QFormLayout *form)
{
    auto *controls = new SceneViewOutputControls(form->parentWidget());
    form->addRow(controls);
    m_refreshers.push_back([controls](const GuideObject &o) { controls->setObject(o); });
    connect(controls, &SceneViewOutputControls::edited, this,
            [this](const std::function<void(GuideObject &)> &change) { commit(change); });
}

void ScenePropertyPanel::addVideoSourceRows(QFormLayout *form, bool projectorImage)
{
    auto *controls = new SceneVideoSourceControls(
        projectorImage,
        [this](const GuideObject &o, bool projector) { return m_videoStatus ? m_videoStatus(o, projector) : QString(); },
        form->parentWidget());
    form->addRow(controls);
    m_refreshers.push_back([controls](const GuideObject &o) { controls->setObject(o); });
    connect(controls, &SceneVideoSourceControls::edited, this,
            [this](const std::function<void(GuideObject &)> &change) { commit(change); });
}

void ScenePropertyPanel::buildShape()
{
    const int kind = m_object.guide_index;
    switch (kind) {
    case KindPlane:
    case KindGuide:
    case KindImage: {
        QFormLayout *form = addGroup(tr("Plane"));
        addFloat(form, tr("Corner radius"), &GuideObject::plane_corner_radius, 0, kMaxMillimetres, 0, 10, QStringLiteral("mm"));
        addInt(form, tr("Round lines"), &GuideObject::plane_round_lines, 0, 512);
        addInt(form, tr("U lines"), &GuideObject::plane_u_lines, 0, 512);
        addInt(form, tr("V lines"), &GuideObject::plane_v_lines, 0, 512);
        break;
    }
    case KindCirclePlane: {
        QFormLayout *form = addGroup(tr("Circle Plane"));
        addChoice(form, tr("Mapping"), &GuideObject::circle_plane_mode, {tr("Planar"), tr("Polar")});
        addFloat(form, tr("Hole radius"), &GuideObject::circle_plane_hole_radius, 0, kMaxMillimetres, 0, 10, QStringLiteral("mm"));
        addFloat(form, tr("Angle"), &GuideObject::circle_plane_angle, 1, 360, 1, 1, QStringLiteral("°"));
        addBool(form, tr("Flip polar V"), &GuideObject::circle_plane_polar_v_flipped);
        break;
    }
    case KindCylinderWall: {
        QFormLayout *form = addGroup(tr("Cylinder Wall"));
        addFloat(form, tr("Height"), &GuideObject::wall_cylinder_height, 1, kMaxMillimetres, 0, 10, QStringLiteral("mm"));
        addFloat(form, tr("Angle"), &GuideObject::wall_cylinder_angle, 1, 360, 1, 1, QStringLiteral("°"));
        addFloat(form, tr("Radius"), &GuideObject::wall_cylinder_radius, 50, kMaxMillimetres, 0, 10, QStringLiteral("mm"));
        addBool(form, tr("Lock arc length"), &GuideObject::wall_cylinder_arc_length_lock);
        addInt(form, tr("U lines"), &GuideObject::wall_cylinder_u_lines, 0, 512);
        addInt(form, tr("V lines"), &GuideObject::wall_cylinder_v_lines, 1, 512);
        addBool(form, tr("Wall"), &GuideObject::wall_cylinder_wall);
        addBool(form, tr("Top"), &GuideObject::wall_cylinder_top);
        addBool(form, tr("Floor"), &GuideObject::wall_cylinder_floor);
        break;
    }
    case KindPerson: {
        QFormLayout *form = addGroup(tr("Person"));
        addFloat(form, tr("Height"), &GuideObject::people_height, 1, kMaxMillimetres, 0, 10, QStringLiteral("mm"));
        break;
    }
    case KindCurvedSurface: {
        if (curvedShapeOf(m_object) == CurvedShape::Horseshoe) {
            QFormLayout *form = addGroup(tr("Horseshoe"));
            addInt(form, tr("U lines"), &GuideObject::horseshoe_u_lines, 0, 512);
            addInt(form, tr("V lines"), &GuideObject::horseshoe_v_lines, 0, 512);
            addInt(form, tr("Round lines"), &GuideObject::horseshoe_round_u_lines, 0, 512);
            addBool(form, tr("Wall"), &GuideObject::horseshoe_wall);
            addBool(form, tr("Floor"), &GuideObject::horseshoe_floor);
            addFloat(form, tr("Bend X"), &GuideObject::horseshoe_rotation_x, -360, 360, 1, 1, QStringLiteral("°"));
            addFloat(form, tr("Bend Y"), &GuideObject::horseshoe_rotation_y, -360, 360, 1, 1, QStringLiteral("°"));
            addFloat(form, tr("Bend Z"), &GuideObject::horseshoe_rotation_z, -360, 360, 1, 1, QStringLiteral("°"));
        } else {
            QFormLayout *form = addGroup(curvedShapeOf(m_object) == CurvedShape::Dome ? tr("Dome") : tr("Sphere"));
            addFloat(form, tr("U start"), &GuideObject::sphere_u_start, 0, 360, 1, 1, QStringLiteral("°"));
            addFloat(form, tr("U end"), &GuideObject::sphere_u_end, 0, 360, 1, 1, QStringLiteral("°"));
            addFloat(form, tr("V start"), &GuideObject::sphere_v_start, 0, 180, 1, 1, QStringLiteral("°"));
            addFloat(form, tr("V end"), &GuideObject::sphere_v_end, 0, 180, 1, 1, QStringLiteral("°"));
            addInt(form, tr("U lines"), &GuideObject::horseshoe_u_lines, 0, 512);
            addInt(form, tr("V lines"), &GuideObject::horseshoe_v_lines, 0, 512);
        }
        break;
    }
    case KindLShape: {
        QFormLayout *form = addGroup(tr("L Shape"));
        addFloat(form, tr("Width"), &GuideObject::box_width, 1, kMaxMillimetres, 0, 10, QStringLiteral("mm"));
        addFloat(form, tr("Height"), &GuideObject::box_height, 1, kMaxMillimetres, 0, 10, QStringLiteral("mm"));
        addFloat(form, tr("Depth"), &GuideObject::box_depth, 1, kMaxMillimetres, 0, 10, QStringLiteral("mm"));
        addFloat(form, tr("Corner radius"), &GuideObject::box_corner_radius, 0, kMaxMillimetres, 0, 10, QStringLiteral("mm"));
        addInt(form, tr("U lines"), &GuideObject::box_u_lines, 0, 512);
        addInt(form, tr("V lines"), &GuideObject::box_v_lines, 0, 512);
        addInt(form, tr("Round lines"), &GuideObject::box_round_lines, 0, 512);
        addBool(form, tr("Wall"), &GuideObject::box_wall);
        addBool(form, tr("Top"), &GuideObject::box_top);
        addBool(form, tr("Floor"), &GuideObject::box_floor);
        break;
    }
    case KindCurve: {
        QFormLayout *form = addGroup(tr("Curve"));
        addFloat(form, tr("Extrude"), &GuideObject::curve_extrude, 0, kMaxMillimetres, 0, 10, QStringLiteral("mm"));
        addBool(form, tr("Closed"), &GuideObject::curve_closed);
        auto *points = new QLabel(form->parentWidget());
        form->addRow(tr("Points"), points);
        m_refreshers.push_back([points](const GuideObject &o) { points->setText(QString::number(o.curve_points.size())); });
        break;
    }
    case KindDistanceMeasure: {
        QFormLayout *form = addGroup(tr("Distance Measure"));
        addFloat(form, tr("Start X"), &GuideObject::distance_start_x, -100000, 100000, 3, 0.01, QStringLiteral("m"));
        addFloat(form, tr("Start Y"), &GuideObject::distance_start_y, -100000, 100000, 3, 0.01, QStringLiteral("m"));
        addFloat(form, tr("Start Z"), &GuideObject::distance_start_z, -100000, 100000, 3, 0.01, QStringLiteral("m"));
        addFloat(form, tr("End X"), &GuideObject::distance_end_x, -100000, 100000, 3, 0.01, QStringLiteral("m"));
        addFloat(form, tr("End Y"), &GuideObject::distance_end_y, -100000, 100000, 3, 0.01, QStringLiteral("m"));
        addFloat(form, tr("End Z"), &GuideObject::distance_end_z, -100000, 100000, 3, 0.01, QStringLiteral("m"));
        break;
    }
    case KindComment: {
        QFormLayout *form = addGroup(tr("Comment"));
        addText(form, tr("Text"), &GuideObject::annotation_text);
        addFloat(form, tr("Label offset X"), &GuideObject::annotation_label_offset_x, -1000, 1000, 3, 0.05, QStringLiteral("m"));
        addFloat(form, tr("Label offset Y"), &GuideObject::annotation_label_offset_y, -1000, 1000, 3, 0.05, QStringLiteral("m"));
        addFloat(form, tr("Label offset Z"), &GuideObject::annotation_label_offset_z, -1000, 1000, 3, 0.05, QStringLiteral("m"));
        addFloat(form, tr("Circle scale"), &GuideObject::annotation_circle_scale, 0.01, 100, 2, 0.1);
        addFloat(form, tr("Label scale"), &GuideObject::annotation_label_scale, 0.01, 100, 2, 0.1);
        addFloat(form, tr("Label scale X"), &GuideObject::annotation_label_scale_x, 0.01, 100, 2, 0.1);
        addFloat(form, tr("Label scale Y"), &GuideObject::annotation_label_scale_y, 0.01, 100, 2, 0.1);
        addFloat(form, tr("Font scale"), &GuideObject::annotation_label_font_scale, 0.01, 100, 2, 0.1);
        break;
    }
    case KindDxfMesh: {
        QFormLayout *form = addGroup(tr("DXF Mesh"));
        addFloat(form, tr("Line thickness"), &GuideObject::dxf_line_thickness, 0, 1000, 2, 0.5);
        addFloat(form, tr("Extrude"), &GuideObject::dxf_extrude, 0, kMaxMillimetres, 0, 10, QStringLiteral("mm"));
        break;
    }
    case KindObjMesh: {
        QFormLayout *form = addGroup(tr("OBJ Mesh"));
        auto *path = new QLabel(form->parentWidget());
        path->setWordWrap(true);
        path->setTextInteractionFlags(Qt::TextSelectableByMouse);
        form->addRow(tr("File"), path);
        m_refreshers.push_back([path](const GuideObject &o) { path->setText(o.obj_path); });
        break;
    }
    default:
        break;
    }
}

void ScenePropertyPanel::buildProjector()
{
    const bool projector = m_object.isProjector();
    QFormLayout *form = addGroup(projector ? tr("Projector") : tr("Camera"));
    addInt(form, tr("Resolution width"), &GuideObject::projector_resolution_width, 1, 16384, tr("px"));
    addInt(form, tr("Resolution height"), &GuideObject::projector_resolution_height, 1, 16384, tr("px"));
    addFloat(form, tr("Throw ratio"), &GuideObject::throw_rate, 0.1, 10, 3, 0.01);
    addFloat(form, tr("Lens shift X"), &GuideObject::lens_shift_x, -100, 100, 1, 1, QStringLiteral("%"));
    addFloat(form, tr("Lens shift Y"), &GuideObject::lens_shift_y, -100, 100, 1, 1, QStringLiteral("%"));
    addBool(form, tr("Flip horizontal"), &GuideObject::projector_flip_h);
    addBool(form, tr("Flip vertical"), &GuideObject::projector_flip_v);
    addBool(form, tr("Rotate 180°"), &GuideObject::projector_rotate_180);
    addBool(form, tr("Show frustum"), &GuideObject::show_projector_frustum);
    addBool(form, tr("Show name"), &GuideObject::projector_name_visible);
    addBool(form, tr("Show info text"), &GuideObject::projector_info_text_visible);
    addViewOutputRows(form);
    if (!projector)
        return;
    // The window owns the calibration dialog; the panel only asks for it.
    auto *calibrate = new QPushButton(tr("Calibrate Projector..."), form->parentWidget());
    calibrate->setObjectName(QStringLiteral("calibrateProjectorButton"));
    connect(calibrate, &QPushButton::clicked, this,
            [this] { QMetaObject::invokeMethod(window(), "calibrateSelectedProjector", Qt::DirectConnection); });
    form->addRow(calibrate);
    addBool(form, tr("Projection visible"), &GuideObject::projection_visible);
    addNumber(
        form, tr("Projection opacity"), [](const GuideObject &o) { return double(o.projection_opacity) * 100.0; },
        [](GuideObject &o, double v) { o.projection_opacity = float(v / 100.0); }, 0, 100, 0, 5,
        QStringLiteral("%"));
    addColor(form, tr("Colour"), &GuideObject::projector_default_color);

    QFormLayout *source = addGroup(tr("Projected Image"));
    // One source list: every guide tab by its title, then every Guide object (standing for
    // the guide it shows); the index stored is always the guide's.
    QList<QPair<int, QString>> sources;
    for (int i = 0; i < m_guideNames.size(); ++i)
        sources.append({i, m_guideNames.at(i)});
    for (const auto &object : std::as_const(m_guideObjects))
        sources.append({object.first, tr("Guide object: %1").arg(object.second)});
    addIndexedChoice(source, tr("Guide"), &GuideObject::projector_image_guide_index, sources,
                     tr("Guide %1 (missing)"));
    addSliceChoice(source);
    addFile(source, tr("Image file"), &GuideObject::projector_image_file_path,
            tr("Images and movies (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp *.mp4 *.mov *.avi *.mkv);;All files (*)"));
    addVideoSourceRows(source, true);
}

void ScenePropertyPanel::addSliceChoice(QFormLayout *form)
{
    // The entries follow the projector's guide: its array's columns and rows.
    auto *combo = new QComboBox(form->parentWidget());
    combo->setObjectName(QStringLiteral("vantreoProjectorSliceChoice"));
    form->addRow(tr("Array slice"), combo);
    m_refreshers.push_back([this, combo](const GuideObject &o) {
        const QSignalBlocker block(combo);
        combo->clear();
        combo->addItem(tr("Whole guide"), QPoint(-1, -1));
        const int guide = o.projector_image_guide_index;
        if (guide >= 0 && guide < m_guideArrays.size()) {
            const GuideArraySlices &array = m_guideArrays.at(guide);
            for (int row = 0; row < std::min(array.rows, kMaxGuideArraySide); ++row) {
                for (int column = 0; column < std::min(array.columns, kMaxGuideArraySide); ++column)
                    combo->addItem(tr("Column %1, Row %2").arg(column + 1).arg(row + 1), QPoint(column, row));
            }
        }
        const QPoint current(o.projector_image_slice_column, o.projector_image_slice_row);
        int at = current.x() < 0 || current.y() < 0 ? 0 : combo->findData(current);
        if (at < 0) {
            // Kept when the guide has fewer projectors now; the whole guide shows meanwhile.
            combo->addItem(tr("Column %1, Row %2 (not in the array)").arg(current.x() + 1).arg(current.y() + 1), current);
            at = combo->count() - 1;
        }
        combo->setCurrentIndex(at);
        combo->setEnabled(guide >= 0);
    });
    connect(combo, &QComboBox::activated, this, [this, combo](int row) {
        const QPoint slice = combo->itemData(row).toPoint();
        commit([&](GuideObject &o) {
            o.projector_image_slice_column = slice.x();
            o.projector_image_slice_row = slice.y();
        });
    });
}

void ScenePropertyPanel::buildFootprint()
{
    QFormLayout *form = addGroup(tr("Pixel Footprint"));
    addBool(form, tr("Heat map"), &GuideObject::projector_pixel_footprint_heatmap_visible);
    addBool(form, tr("Grid"), &GuideObject::projector_pixel_footprint_grid_visible);
    addBool(form, tr("Labels"), &GuideObject::projector_pixel_footprint_labels_visible);
    addBool(form, tr("Automatic range"), &GuideObject::projector_pixel_footprint_heatmap_auto_range);
    addNumber(
        form, tr("Heat map opacity"),
        [](const GuideObject &o) { return double(o.projector_pixel_footprint_heatmap_opacity) * 100.0; },
        [](GuideObject &o, double v) { o.projector_pixel_footprint_heatmap_opacity = float(v / 100.0); }, 0,
        100, 0, 5, QStringLiteral("%"));
    addInt(form, tr("Grid step"), &GuideObject::projector_pixel_footprint_sample_step_pixels, 1, 16384, tr("px"));
    addChoice(form, tr("Metric"), &GuideObject::projector_pixel_footprint_metric,
              {tr("Larger of U and V"), tr("U (horizontal)"), tr("V (vertical)"), tr("Area (√(U×V))")});
}
