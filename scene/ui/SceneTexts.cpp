#include "scene/ui/SceneTexts.h"

QString SceneTexts::pluralEnding(int count)
{
    return count == 1 ? QString() : QStringLiteral("s");
}

QString SceneTexts::withCount(const QString &pattern, int count)
{
    QString text = pattern.arg(count);
    if (pattern.contains(QLatin1String("%2")))
        text = text.arg(pluralEnding(count));
    return text;
}

QString SceneTexts::helpTitle()
{
    return tr("Viewport Controls");
}

QStringList SceneTexts::helpLines()
{
    return {tr("Mouse Wheel: Zoom"),
            tr("P: Perspective View"),
            tr("V: Projector View"),
            tr("I: Toggle Projector Frustum"),
            tr("X: Toggle Local/World Handles"),
            tr("Alt + Left Drag: Orbit"),
            tr("Alt + Middle Drag: Pan"),
            tr("Alt + Right Drag: Dolly"),
            tr("F: Frame Selection")};
}

QString SceneTexts::perspectiveViewName() { return tr("Perspective"); }
QString SceneTexts::frontViewName() { return tr("Front"); }
QString SceneTexts::sideViewName() { return tr("Side"); }

QString SceneTexts::objectViewName(const QString &objectName)
{
    return tr("%1 View").arg(objectName);
}

QString SceneTexts::curveDrawingStatus()
{
    return tr("Click points on the y=0 plane. Right-click or Esc to finish.");
}

QString SceneTexts::copyPlainText(int count)
{
    return withCount(tr("VantreoGuide 3D object copy (%1 object%2)"), count);
}

QString SceneTexts::copiedMessage(int count)
{
    return withCount(tr("Copied %1 3D object%2."), count);
}

QString SceneTexts::nothingCopiedMessage() { return tr("No 3D objects were copied."); }
QString SceneTexts::selectToCopyMessage() { return tr("Select a 3D object to copy."); }

QString SceneTexts::pastedMessage(int count)
{
    return withCount(tr("Pasted %1 3D object%2."), count);
}

QString SceneTexts::deleteTitle() { return tr("Delete 3D Object"); }

QString SceneTexts::deleteQuestion(const QStringList &names)
{
    QString subject;
    if (names.size() > 1)
        subject = tr("%1 objects").arg(names.size());
    else if (names.size() == 1 && !names.first().isEmpty())
        subject = names.first();
    else
        subject = tr("selected object");
    return tr("Delete \"%1\" from the 3D View?").arg(subject);
}

QString SceneTexts::calibrationClosingNotice(const QStringList &projectorNames)
{
    if (projectorNames.size() == 1)
        return tr("The Projector Calibration window will close because its projector \"%1\" is being deleted.")
            .arg(projectorNames.first());
    return tr("Projector Calibration windows will close because their projectors are being deleted.");
}
