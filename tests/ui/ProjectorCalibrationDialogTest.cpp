#include "calibration/ui/ProjectorCalibrationDialog.h"
#include "calibration/ui/ProjectorCalibrationPointView.h"

#include "calibration/SyntheticCalibrationScene.h"

#include "project/ProjectFile.h"
#include "scene/LensModel.h"
#include "scene/Transform.h"
#include "scene/ui/SceneWidget.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QItemSelectionModel>
#include <QMessageBox>
#include <QMouseEvent>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTranslator>

#include <array>
#include <cmath>
#include <memory>

namespace {

using PointView = ProjectorCalibrationDialog::PointView;

// Press and release at a sub-pixel position: the lens model's pixels are not whole numbers.
void clickAt(QWidget *widget, const QPointF &at, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    const QPointF global = widget->mapToGlobal(at);
    QMouseEvent press(QEvent::MouseButtonPress, at, global, Qt::LeftButton, Qt::LeftButton, modifiers);
    QApplication::sendEvent(widget, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, at, global, Qt::LeftButton, Qt::NoButton, modifiers);
    QApplication::sendEvent(widget, &release);
}

void dragFromTo(QWidget *widget, const QPointF &from, const QPointF &to)
{
    QMouseEvent press(QEvent::MouseButtonPress, from, widget->mapToGlobal(from), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(widget, &press);
    const QPointF middle = (from + to) / 2.0;
    for (const QPointF &p : {middle, to}) {
        QMouseEvent move(QEvent::MouseMove, p, widget->mapToGlobal(p), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &move);
    }
    QMouseEvent release(QEvent::MouseButtonRelease, to, widget->mapToGlobal(to), Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(widget, &release);
}

struct MessageBoxAnswer {
    QString title;
    QString text;
    bool seen = false;
};

void answerNextMessageBox(QMessageBox::StandardButton button, MessageBoxAnswer *record)
{
    QTimer::singleShot(0, [button, record] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box) {
            answerNextMessageBox(button, record);
            return;
        }
        record->seen = true;
        record->title = box->windowTitle();
        record->text = box->text();
        box->button(button)->click();
    });
}

struct Flips {
    bool h = false, v = false, turn = false;
};

double rotationDegreesBetween(const GuideObject &a, const GuideObject &b)
{
    const Eigen::Matrix3d r = vg::scene::objectRotation(a).transpose() * vg::scene::objectRotation(b);
    return std::acos(std::clamp((r.trace() - 1.0) / 2.0, -1.0, 1.0)) * 180.0 / M_PI;
}

// A box-like target (top, wall and floor of an L shape) at the origin and a projector aimed
// at it; `truth` is where the real projector stands, the scene's projector starts away from it.
class CalibrationDialogScene
{
public:
    explicit CalibrationDialogScene(const Flips &flips)
    {
        SceneModel &model = scene.model();
        target = model.addLShape(QStringLiteral("Box"), 2000, 1500, 1000);
        GuideObject box = model.object(target);
        box.box_top = true;
        box.box_u_lines = 2;
        box.box_v_lines = 2;
        box.translate_y = 0.0f;
        scene.setObjectWithoutUndo(target, box);

        projector = model.addProjector(QStringLiteral("Projector"), 400, 150, 400, false);
        truth = model.object(projector);
        truth.projector_resolution_width = 1920;
        truth.projector_resolution_height = 1200;
        truth.throw_rate = 1.4f;
        truth.lens_shift_x = 4.0f;
        truth.lens_shift_y = 18.0f;
        truth.projector_flip_h = flips.h;
        truth.projector_flip_v = flips.v;
        truth.projector_rotate_180 = flips.turn;
        const Eigen::Vector3d position(0.9, 1.6, 5.2);
        const Eigen::Matrix3d rotation = lookRotation(Eigen::Vector3d(0.05, 0.1, 0.0) - position, 4.0);
        vg::scene::setObjectPose(truth, position, rotation);

        GuideObject start = truth;
        start.translate_x += 0.25f;
        start.translate_y -= 0.15f;
        start.translate_z += 0.3f;
        start.rotate_x += 2.5f;
        start.rotate_y -= 3.0f;
        start.rotate_z += 1.5f;
        start.throw_rate = 1.25f;
        start.lens_shift_y = 8.0f;
        scene.setObjectWithoutUndo(projector, start);
        scene.model().clearUndoHistory();
    }

    // Where the real projector shows a world point, in its (flipped) image.
    QPointF truthPixel(const Eigen::Vector3d &world) const
    {
        const vg::scene::LensProjection p =
            vg::scene::projectWorldPoint(vg::scene::lensIntrinsicsOf(truth), vg::scene::lensPoseOf(truth), world);
        return {p.px, p.py};
    }

    SceneWidget scene;
    int target = -1;
    int projector = -1;
    GuideObject truth;
};

// The eight corners of the target among the wireframe vertices.
std::array<int, 8> boxCorners(const CalibrationWireframe &wire)
{
    std::array<int, 8> corners{};
    for (int k = 0; k < 8; ++k) {
        const Eigen::Vector3d dir((k & 1) ? 1 : -1, (k & 2) ? 1 : -1, (k & 4) ? 1 : -1);
        double best = -1e300;
        for (int i = 0; i < int(wire.vertices.size()); ++i) {
            const double d = wire.vertices[size_t(i)].dot(dir);
            if (d > best) {
                best = d;
                corners[size_t(k)] = i;
            }
        }
    }
    return corners;
}

class CalibrationDialogTest : public ::testing::TestWithParam<Flips>
{
protected:
    void SetUp() override
    {
        world = std::make_unique<CalibrationDialogScene>(GetParam());
        dialog = std::make_unique<ProjectorCalibrationDialog>(
            &world->scene, GuideProjectorCalibrationSettings(), nullptr, world->projector,
            [this](const GuideProjectorCalibrationSettings &s) { handedBack = s; ++settingsCalls; });
        dialog->resize(1400, 900);
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
        QApplication::processEvents();
        ASSERT_EQ(dialog->targetIndex(), world->target);
        ASSERT_FALSE(dialog->wireframe().isEmpty());
    }

    // Clicks a vertex in the wireframe view, then its real pixel in the projector view.
    void matchVertex(int vertex)
    {
        const std::optional<QPointF> inWire = dialog->wireframeView()->vertexWidgetPosition(vertex);
        ASSERT_TRUE(inWire.has_value()) << vertex;
        clickAt(dialog->wireframeView(), *inWire);
        const int row = dialog->selectedRow();
        ASSERT_GE(row, 0);
        ASSERT_EQ(dialog->matches().row(row).vertexIndex, vertex);
        EXPECT_EQ(dialog->statusText(), QStringLiteral("Now click the matching real projected/camera point for %1.")
                                            .arg(dialog->matches().row(row).label()));
        const QPointF pixel = world->truthPixel(dialog->wireframe().vertices[size_t(vertex)]);
        clickAt(dialog->projectorView(), dialog->projectorView()->contentToWidget(pixel));
        ASSERT_TRUE(dialog->matches().row(row).image.has_value());
        EXPECT_NEAR(dialog->matches().row(row).image->x(), pixel.x(), 1e-6);
        EXPECT_NEAR(dialog->matches().row(row).image->y(), pixel.y(), 1e-6);
    }

    void matchAllCorners()
    {
        for (int vertex : boxCorners(dialog->wireframe()))
            matchVertex(vertex);
    }

    const GuideObject &sceneProjector() const { return world->scene.objects().at(world->projector); }

    std::unique_ptr<CalibrationDialogScene> world;
    std::unique_ptr<ProjectorCalibrationDialog> dialog;
    GuideProjectorCalibrationSettings handedBack;
    int settingsCalls = 0;
};

} // namespace

TEST_P(CalibrationDialogTest, EightClickedCornersSnapTheProjectorOntoTheRealOne)
{
    matchAllCorners();
    ASSERT_EQ(dialog->matches().count(), 8);
    const GuideObject &fitted = sceneProjector();
    const Eigen::Vector3d error = vg::scene::objectTranslation(fitted) - vg::scene::objectTranslation(world->truth);
    EXPECT_LT(error.norm(), 1e-3);
    EXPECT_LT(rotationDegreesBetween(fitted, world->truth), 0.05);
    EXPECT_NEAR(fitted.throw_rate, world->truth.throw_rate, 1e-3);
    EXPECT_EQ(fitted.projector_flip_h, world->truth.projector_flip_h);
    EXPECT_TRUE(dialog->resultText().startsWith(QStringLiteral("Auto Calibration applied. RMS error: 0.00 px")))
        << dialog->resultText().toStdString();
    // Every row got its residual, the honest fit names nobody.
    for (int row = 0; row < 8; ++row)
        EXPECT_FALSE(dialog->table()->item(row, 7)->text().isEmpty());
    EXPECT_FALSE(dialog->diagnosticsText().contains(QStringLiteral("looks mismatched")));
    // The matches are kept in the projector's record.
    EXPECT_EQ(fitted.projector_calibration.matches.size(), 8);
}

TEST_P(CalibrationDialogTest, MarkerDragUndoAndRedoRestorePositionsWithTheirTexts)
{
    matchAllCorners();
    const QPointF before = *dialog->matches().row(7).image;
    const GuideObject fitted = sceneProjector();
    PointView *view = dialog->projectorView();
    dialog->selectRow(3);   // dragging another row's marker selects it
    dragFromTo(view, view->contentToWidget(before), view->contentToWidget(before) + QPointF(30, 18));
    EXPECT_EQ(dialog->selectedRow(), 7);
    const QPointF moved = *dialog->matches().row(7).image;
    EXPECT_GT(std::hypot(moved.x() - before.x(), moved.y() - before.y()), 20.0);
    EXPECT_NE(vg::scene::objectTranslation(sceneProjector()), vg::scene::objectTranslation(fitted));

    QTest::keyClick(dialog.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(dialog->statusText(), QStringLiteral("Calibration point move undone."));
    EXPECT_EQ(*dialog->matches().row(7).image, before);
    EXPECT_LT((vg::scene::objectTranslation(sceneProjector()) - vg::scene::objectTranslation(world->truth)).norm(), 1e-3);

    dialog->redo();
    EXPECT_EQ(dialog->statusText(), QStringLiteral("Calibration point move redone."));
    EXPECT_EQ(*dialog->matches().row(7).image, moved);
    dialog->redo();
    EXPECT_EQ(dialog->statusText(), QStringLiteral("No calibration point edit to redo."));
}

TEST_P(CalibrationDialogTest, DeletingTwoRowsReportsAndUndoesAsOneStep)
{
    matchAllCorners();
    const QVector<CalibrationMatchRow> rows = dialog->matches().rows();
    QTableWidget *table = dialog->table();
    table->clearSelection();
    table->selectionModel()->select(table->model()->index(2, 0),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    table->selectionModel()->select(table->model()->index(5, 0),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QTest::keyClick(table, Qt::Key_Delete);
    EXPECT_EQ(dialog->statusText(), QStringLiteral("2 matched points deleted."));
    ASSERT_EQ(dialog->matches().count(), 6);
    EXPECT_EQ(dialog->matches().row(2), rows[3]);
    EXPECT_EQ(sceneProjector().projector_calibration.matches.size(), 6);

    dialog->undo();
    EXPECT_EQ(dialog->statusText(), QStringLiteral("2 calibration point deletions undone."));
    EXPECT_EQ(dialog->matches().rows(), rows);

    dialog->selectRow(0);
    table->clearSelection();
    table->selectRow(0);
    EXPECT_EQ(dialog->deleteSelectedRows(), 1);
    EXPECT_EQ(dialog->statusText(), QStringLiteral("Matched point deleted."));
    dialog->undo();
    EXPECT_EQ(dialog->statusText(), QStringLiteral("Calibration point deletion undone."));
    // Below the deletions are the eight clicks: undoing them leaves every row unplaced.
    for (int i = 0; i < 8; ++i) {
        dialog->undo();
        EXPECT_EQ(dialog->statusText(), QStringLiteral("Calibration point move undone."));
    }
    dialog->undo();
    EXPECT_EQ(dialog->statusText(), QStringLiteral("No calibration point edit to undo."));
    for (const CalibrationMatchRow &row : dialog->matches().rows())
        EXPECT_FALSE(row.image.has_value());
}

TEST_P(CalibrationDialogTest, ClearAsksFirstAndKeepsTheRowsOnNo)
{
    matchAllCorners();
    auto *clear = dialog->findChild<QAbstractButton *>(QStringLiteral("calibrationClear"));
    ASSERT_NE(clear, nullptr);
    MessageBoxAnswer no;
    answerNextMessageBox(QMessageBox::No, &no);
    clear->click();
    EXPECT_TRUE(no.seen);
    EXPECT_EQ(no.title, QStringLiteral("Clear Calibration Points"));
    EXPECT_EQ(no.text, QStringLiteral("Clear all calibration point matches?"));
    EXPECT_EQ(dialog->matches().count(), 8);

    MessageBoxAnswer yes;
    answerNextMessageBox(QMessageBox::Yes, &yes);
    clear->click();
    EXPECT_TRUE(yes.seen);
    EXPECT_EQ(dialog->matches().count(), 0);
    EXPECT_EQ(dialog->statusText(), QStringLiteral("Matched points cleared."));
    EXPECT_TRUE(sceneProjector().projector_calibration.matches.isEmpty());
}

TEST_P(CalibrationDialogTest, RowMovedFortyPixelsByArrowKeysIsNamedMismatched)
{
    matchAllCorners();
    dialog->selectRow(4);
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(dialog->projectorView(), Qt::Key_Right, Qt::ShiftModifier);
    const QString text = dialog->diagnosticsText();
    EXPECT_TRUE(text.contains(QStringLiteral("Point 5 looks mismatched: without it the RMS drops from")))
        << text.toStdString();
    for (int row : {1, 2, 3, 4, 6, 7, 8})
        EXPECT_FALSE(text.contains(QStringLiteral("Point %1 looks").arg(row))) << row;
    EXPECT_EQ(dialog->table()->item(4, 7)->toolTip(), text.split(QLatin1Char('\n')).first());
    EXPECT_TRUE(dialog->table()->item(4, 7)->text().endsWith(QStringLiteral("  mismatched")));
    for (int row : {0, 1, 2, 3, 5, 6, 7})
        EXPECT_FALSE(dialog->table()->item(row, 7)->text().contains(QStringLiteral("mismatched"))) << row;
}

INSTANTIATE_TEST_SUITE_P(Flips, CalibrationDialogTest,
                         ::testing::Values(Flips{}, Flips{true, false, false}, Flips{true, false, true}),
                         [](const ::testing::TestParamInfo<Flips> &info) {
                             return std::string(info.param.h ? "FlipH" : "") + (info.param.v ? "FlipV" : "")
                                    + (info.param.turn ? "Turned" : "") + (info.index == 0 ? "Plain" : "");
                         });

namespace {

class CalibrationDialogPlainTest : public ::testing::Test
{
protected:
    void SetUp() override { world = std::make_unique<CalibrationDialogScene>(Flips{}); }
    std::unique_ptr<CalibrationDialogScene> world;
};

} // namespace

TEST_F(CalibrationDialogPlainTest, SettingsGoBackAtOnceAndASavedProjectReopensWithMatchesAndSettings)
{
    GuideProjectorCalibrationSettings stored;
    auto dialog = std::make_unique<ProjectorCalibrationDialog>(
        &world->scene, stored, nullptr, world->projector, [this](const GuideProjectorCalibrationSettings &s) {
            world->scene.setProjectorCalibrationSettings(s);
        });
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    auto *lensShift = dialog->findChild<QCheckBox *>(QStringLiteral("calibrationAdjustLensShift"));
    ASSERT_NE(lensShift, nullptr);
    lensShift->click();
    EXPECT_EQ(dialog->statusText(), QStringLiteral("Lens Shift X/Y is fixed to the current projector values."));
    EXPECT_FALSE(world->scene.viewSettings().projector_calibration_settings.adjust_lens_shift);

    const std::array<int, 8> corners = boxCorners(dialog->wireframe());
    for (int i = 0; i < 3; ++i) {
        clickAt(dialog->wireframeView(), *dialog->wireframeView()->vertexWidgetPosition(corners[size_t(i)]));
        const QPointF pixel = world->truthPixel(dialog->wireframe().vertices[size_t(corners[size_t(i)])]);
        clickAt(dialog->projectorView(), dialog->projectorView()->contentToWidget(pixel));
    }
    const QVector<CalibrationMatchRow> rows = dialog->matches().rows();
    dialog.reset();

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("calibrated.vgs"));
    ProjectDocument doc;
    doc.activeView = world->scene.viewSettings();
    doc.views = {doc.activeView};
    QString error;
    ASSERT_TRUE(saveProjectDocument(path, doc, &error)) << error.toStdString();
    ProjectDocument loaded;
    ASSERT_TRUE(loadProjectDocument(path, &loaded, &error)) << error.toStdString();
    ASSERT_FALSE(loaded.views.isEmpty());

    SceneWidget reopened;
    reopened.setViewSettings(loaded.views.first());
    ProjectorCalibrationDialog again(&reopened, loaded.views.first().projector_calibration_settings, nullptr,
                                     world->projector);
    EXPECT_FALSE(again.settings().adjust_lens_shift);
    EXPECT_FALSE(again.findChild<QCheckBox *>(QStringLiteral("calibrationAdjustLensShift"))->isChecked());
    ASSERT_EQ(again.matches().count(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(again.matches().row(i).label(), rows[i].label());
        EXPECT_EQ(again.matches().row(i).vertexIndex, rows[i].vertexIndex);
        EXPECT_NEAR(again.matches().row(i).image->x(), rows[i].image->x(), 1e-9);
        EXPECT_NEAR(again.matches().row(i).z, rows[i].z, 1e-9);
    }
    EXPECT_EQ(again.targetIndex(), world->target);
}

TEST_F(CalibrationDialogPlainTest, TooFewOriginalPointsStillPreviewButRefuseTheSceneUpdate)
{
    ProjectorCalibrationDialog dialog(&world->scene, GuideProjectorCalibrationSettings(), nullptr, world->projector);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    const GuideObject before = world->scene.objects().at(world->projector);
    const std::array<int, 8> corners = boxCorners(dialog.wireframe());
    for (int i = 0; i < 6; ++i) {
        clickAt(dialog.wireframeView(), *dialog.wireframeView()->vertexWidgetPosition(corners[size_t(i)]));
        const QPointF pixel = world->truthPixel(dialog.wireframe().vertices[size_t(corners[size_t(i)])]);
        clickAt(dialog.projectorView(), dialog.projectorView()->contentToWidget(pixel));
    }
    // Pretend the target changed under the rows: they no longer name its vertices.
    GuideObject box = world->scene.objects().at(world->target);
    box.box_u_lines = 1;
    box.box_v_lines = 1;
    box.box_top = false;
    box.box_floor = false;
    world->scene.setObjectWithoutUndo(world->target, box);
    world->scene.setObjectWithoutUndo(world->projector, before);
    ASSERT_LT(dialog.wireframe().vertices.size(), 8u);
    EXPECT_TRUE(dialog.calibrate(false));
    EXPECT_EQ(dialog.statusText(), QStringLiteral("Calibration preview updated, but 3D View projector update failed: "
                                                  "3D View projector update needs 6 or more original wireframe points."));
    EXPECT_EQ(vg::scene::objectTranslation(world->scene.objects().at(world->projector)),
              vg::scene::objectTranslation(before));
    // The preview shows the fit nonetheless.
    EXPECT_LT((vg::scene::objectTranslation(dialog.previewProjector()) - vg::scene::objectTranslation(world->truth)).norm(),
              0.05);
}

TEST_F(CalibrationDialogPlainTest, MatrixExportAndGuidanceTexts)
{
    ProjectorCalibrationDialog dialog(&world->scene, GuideProjectorCalibrationSettings(), nullptr, world->projector);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("matrix.txt"));
    ASSERT_TRUE(dialog.exportMatrixTo(path));
    EXPECT_EQ(dialog.statusText(), QStringLiteral("Matrix exported from projector transform: %1").arg(path));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().count('\n'), 4);

    QString error;
    EXPECT_FALSE(dialog.updateLut(&error));
    EXPECT_EQ(error, QStringLiteral("Vantreo Server link is disabled."));

    EXPECT_FALSE(dialog.loadReferenceImage(dir.filePath(QStringLiteral("missing.png"))));
    EXPECT_EQ(dialog.statusText(), QStringLiteral("Could not load the reference image."));

    SceneWidget empty;
    ProjectorCalibrationDialog none(&empty, GuideProjectorCalibrationSettings(), nullptr, -1);
    EXPECT_EQ(none.statusText(), QStringLiteral("Add or select a projector object first."));
    EXPECT_FALSE(none.exportMatrixTo(path, &error));
    EXPECT_EQ(error, QStringLiteral("Select a projector before exporting matrix."));
    EXPECT_EQ(none.projectorView()->hint(), QStringLiteral("No target wireframe."));
}

namespace {

double luminanceAround(const QImage &image, const QPointF &at)
{
    double sum = 0.0;
    int n = 0;
    for (int dy = -2; dy <= 2; ++dy) {
        for (int dx = -2; dx <= 2; ++dx) {
            const QPoint p(int(std::lround(at.x())) + dx, int(std::lround(at.y())) + dy);
            if (!image.rect().contains(p))
                continue;
            const QColor c = image.pixelColor(p);
            sum += 0.299 * c.red() + 0.587 * c.green() + 0.114 * c.blue();
            ++n;
        }
    }
    return n ? sum / n : 0.0;
}

} // namespace

// The projector view is the renderer's picture through the lens, mirrored as the real
// projector mirrors it: a small panel in one corner must appear where the lens model puts it.
TEST(CalibrationProjectorViewPicture, PanelAppearsWhereTheFlippedLensShowsIt)
{
    for (const Flips flips : {Flips{}, Flips{true, false, false}, Flips{false, true, false}, Flips{true, false, true}}) {
        SceneWidget scene;
        const int panel = scene.model().addPlane(QStringLiteral("Panel"), 600, 400);
        GuideObject plane = scene.model().object(panel);
        plane.translate_x = -0.9f;
        plane.translate_y = 0.55f;
        plane.translate_z = 0.0f;
        plane.mesh_color = QColor(250, 250, 250);
        scene.setObjectWithoutUndo(panel, plane);
        const int index = scene.model().addProjector(QStringLiteral("Projector"), 400, 150, 400, false);
        GuideObject projector = scene.model().object(index);
        projector.translate_x = 0.0f;
        projector.translate_y = 0.0f;
        projector.translate_z = 4.0f;
        projector.rotate_x = projector.rotate_y = projector.rotate_z = 0.0f;
        projector.throw_rate = 1.2f;
        projector.lens_shift_x = projector.lens_shift_y = 0.0f;
        projector.projection_visible = false;
        projector.projector_flip_h = flips.h;
        projector.projector_flip_v = flips.v;
        projector.projector_rotate_180 = flips.turn;
        scene.setObjectWithoutUndo(index, projector);

        GuideProjectorCalibrationSettings settings;
        settings.projector_show_shading = true;
        settings.projector_show_wireframe = false;
        settings.projector_show_vertex = false;
        ProjectorCalibrationDialog dialog(&scene, settings, nullptr, index);
        dialog.resize(1400, 900);
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
        QApplication::processEvents();
        PointView *view = dialog.projectorView();
        const QImage shot = view->grab().toImage();

        const vg::scene::LensProjection centre = vg::scene::projectWorldPoint(
            vg::scene::lensIntrinsicsOf(projector), vg::scene::lensPoseOf(projector), {-0.9, 0.55, 0.0});
        ASSERT_TRUE(centre.inside);
        const QPointF at(centre.px, centre.py);
        const QPointF mirroredH(1920 - centre.px, centre.py);
        const QPointF mirroredV(centre.px, 1200 - centre.py);
        const double on = luminanceAround(shot, view->contentToWidget(at));
        const std::string label = std::to_string(flips.h) + std::to_string(flips.v) + std::to_string(flips.turn);
        EXPECT_GT(on, luminanceAround(shot, view->contentToWidget(mirroredH)) + 40.0) << label;
        EXPECT_GT(on, luminanceAround(shot, view->contentToWidget(mirroredV)) + 40.0) << label;
    }
}

TEST(CalibrationDialogTranslation, KoreanTextsReachTheWindowAndTheCoreMessages)
{
    QTranslator korean;
    ASSERT_TRUE(korean.load(QStringLiteral(":/i18n/VantreoGuide_ko.qm")));
    QCoreApplication::installTranslator(&korean);
    {
        SceneWidget empty;
        ProjectorCalibrationDialog dialog(&empty, GuideProjectorCalibrationSettings(), nullptr, -1);
        auto *calibrate = dialog.findChild<QAbstractButton *>(QStringLiteral("calibrationCalibrate"));
        ASSERT_NE(calibrate, nullptr);
        EXPECT_EQ(calibrate->text(), QStringLiteral("프로젝터 캘리브레이션"));
        EXPECT_EQ(dialog.statusText(), QStringLiteral("먼저 프로젝터 오브젝트를 추가하거나 선택하세요."));
        EXPECT_EQ(CalibrationMatchList::deletedText(2), QStringLiteral("매칭 포인트 2개를 삭제했습니다."));
        EXPECT_TRUE(calibrationMismatchText(3, 4.0, 1.0).startsWith(QStringLiteral("3번 포인트")));
    }
    QCoreApplication::removeTranslator(&korean);
}

TEST_F(CalibrationDialogPlainTest, FillFromProjectionAndRestoreFollowTheCurrentProjector)
{
    ProjectorCalibrationDialog dialog(&world->scene, GuideProjectorCalibrationSettings(), nullptr, world->projector);
    dialog.resize(1400, 900);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    const GuideObject rough = world->scene.objects().at(world->projector);
    const std::array<int, 8> corners = boxCorners(dialog.wireframe());
    for (int vertex : corners) {
        clickAt(dialog.wireframeView(), *dialog.wireframeView()->vertexWidgetPosition(vertex));
        const QPointF pixel = world->truthPixel(dialog.wireframe().vertices[size_t(vertex)]);
        clickAt(dialog.projectorView(), dialog.projectorView()->contentToWidget(pixel));
    }
    ASSERT_NE(vg::scene::objectTranslation(world->scene.objects().at(world->projector)),
              vg::scene::objectTranslation(rough));

    dialog.restoreProjector();
    const GuideObject restored = world->scene.objects().at(world->projector);
    EXPECT_EQ(vg::scene::objectTranslation(restored), vg::scene::objectTranslation(rough));
    EXPECT_EQ(restored.throw_rate, rough.throw_rate);
    EXPECT_EQ(restored.projector_calibration.matches.size(), 8);

    // Filled from the restored (rough) projector: each row lands where it projects the vertex.
    EXPECT_EQ(dialog.fillFromProjection(), 8);
    EXPECT_EQ(dialog.statusText(), QStringLiteral("Filled 8 matched rows from the current wireframe projection."));
    const vg::scene::LensModel lens(vg::scene::lensIntrinsicsOf(rough), vg::scene::lensPoseOf(rough), 100.0);
    for (const CalibrationMatchRow &row : dialog.matches().rows()) {
        const vg::scene::LensProjection p = lens.project({row.x, row.y, row.z});
        ASSERT_TRUE(row.image.has_value());
        EXPECT_NEAR(row.image->x(), p.px, 1e-6);
        EXPECT_NEAR(row.image->y(), p.py, 1e-6);
    }
    // The filled rows fit the rough projector exactly.
    EXPECT_TRUE(dialog.calibrate(false));
    EXPECT_LT(dialog.lastResult().rmsError, 1e-3);
    EXPECT_TRUE(dialog.statusText().startsWith(QStringLiteral("Calibration applied. RMS error: 0.00 px")));
    EXPECT_LT((vg::scene::objectTranslation(world->scene.objects().at(world->projector))
               - vg::scene::objectTranslation(rough)).norm(), 1e-3);
}

TEST_F(CalibrationDialogPlainTest, WindowFollowsItsProjectorAndTargetWhenAnEarlierObjectIsDeleted)
{
    SceneWidget &scene = world->scene;
    // An unrelated object first in the list, then the window opens.
    GuideObject marker = SceneModel::defaultObject(KindPerson);
    marker.name = QStringLiteral("Stand-in");
    QVector<GuideObject> objects = scene.objects();
    objects.prepend(marker);
    scene.model().loadObjects(objects);
    const int target = world->target + 1;
    const int projector = world->projector + 1;
    ProjectorCalibrationDialog dialog(&scene, GuideProjectorCalibrationSettings(), nullptr, projector);
    dialog.setTargetIndex(target);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    const std::array<int, 8> corners = boxCorners(dialog.wireframe());
    for (int vertex : corners) {
        clickAt(dialog.wireframeView(), *dialog.wireframeView()->vertexWidgetPosition(vertex));
        const QPointF pixel = world->truthPixel(dialog.wireframe().vertices[size_t(vertex)]);
        clickAt(dialog.projectorView(), dialog.projectorView()->contentToWidget(pixel));
    }
    ASSERT_EQ(dialog.matches().row(0).targetIndex, target);

    scene.model().removeObjects({0});
    EXPECT_EQ(dialog.projectorIndex(), projector - 1);
    EXPECT_EQ(dialog.targetIndex(), target - 1);
    EXPECT_EQ(dialog.matches().row(0).targetIndex, target - 1);
    // The rows still name the target's own vertices, so the fit may update the projector.
    EXPECT_TRUE(dialog.calibrate(false));
    EXPECT_TRUE(dialog.statusText().startsWith(QStringLiteral("Calibration applied.")))
        << dialog.statusText().toStdString();
}
