// The 3D view tab's OBJ and DXF import: the Add menu's file dialogs and files dropped on
// the view.
#include "scene/ui/ThreeDViewTab.h"

#include "exchange/MeshImport.h"
#include "scene/SceneModel.h"
#include "scene/ui/SceneWidget.h"
#include "common/SettingsKeys.h"

#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QUrl>

namespace {

// Last folder of each import dialog, in the paths group of the program settings.

QStringList droppedMeshFiles(const QMimeData *mime)
{
    QStringList files;
    if (!mime || !mime->hasUrls())
        return files;
    for (const QUrl &url : mime->urls()) {
        if (url.isLocalFile() && vg::exchange::meshFileKind(url.toLocalFile()) != vg::exchange::MeshFileKind::Unknown)
            files.append(url.toLocalFile());
    }
    return files;
}

} // namespace

void ThreeDViewTab::buildImportActions()
{
    m_addMenu->addSeparator();
    const struct {
        AddKind kind;
        const char *text;
    } entries[] = {{AddObjMesh, QT_TR_NOOP("OBJ Mesh...")}, {AddDxfDrawing, QT_TR_NOOP("DXF Drawing...")}};
    for (const auto &entry : entries) {
        QAction *action = m_addMenu->addAction(QString());
        m_texts.bind(action, [text = entry.text] { return tr(text); });
        action->setData(int(entry.kind));
        const AddKind kind = entry.kind;
        connect(action, &QAction::triggered, this, [this, kind] { addObject(kind, true); });
    }
    // The view takes the drops; other files fall through to the window (projects).
    m_view->setAcceptDrops(true);
    m_view->installEventFilter(this);
}

int ThreeDViewTab::importMeshFromDialog(AddKind kind)
{
    const bool obj = kind == AddObjMesh;
    const TextSetting &folder = obj ? Settings::objMeshImportDirectory : Settings::dxfDrawingImportDirectory;
    const QString path = QFileDialog::getOpenFileName(
        this, obj ? tr("Import OBJ Mesh") : tr("Import DXF Drawing"), folder.read(),
        obj ? tr("Wavefront OBJ (*.obj);;All files (*)") : tr("DXF Drawing (*.dxf);;All files (*)"));
    if (path.isEmpty())
        return -1;
    folder.write(QFileInfo(path).absolutePath());
    return importMeshOrTell(path);
}

int ThreeDViewTab::importMesh(const QString &path, QString *error)
{
    GuideObject object;
    if (!vg::exchange::importMeshFile(path, &object, error))
        return -1;
    const int index = m_view->model().addObject(object, true);
    showStatus(tr("Imported %1").arg(QFileInfo(path).fileName()), 4000);
    return index;
}

int ThreeDViewTab::importMeshOrTell(const QString &path)
{
    QString error;
    const int index = importMesh(path, &error);
    if (index < 0)
        QMessageBox::warning(this, tr("Import failed"), error);
    else
        m_view->setFocus();
    return index;
}

bool ThreeDViewTab::filterViewDrops(QEvent *event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto *drag = static_cast<QDragMoveEvent *>(event);
        if (droppedMeshFiles(drag->mimeData()).isEmpty())
            return false; // not ours: the window may take it
        drag->acceptProposedAction();
        return true;
    }
    case QEvent::Drop: {
        auto *drop = static_cast<QDropEvent *>(event);
        const QStringList files = droppedMeshFiles(drop->mimeData());
        if (files.isEmpty())
            return false;
        drop->acceptProposedAction();
        for (const QString &file : files)
            importMeshOrTell(file);
        return true;
    }
    default:
        return false;
    }
}
