#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

// The 3D view's user-visible texts in one place, translated in their own context.
class SceneTexts
{
    Q_DECLARE_TR_FUNCTIONS(SceneTexts)

public:
    // "" for one, "s" otherwise.
    static QString pluralEnding(int count);
    // Fills %1 with the count and %2 with the plural ending when the pattern has one
    // (translations without a plural ending simply leave %2 out).
    static QString withCount(const QString &pattern, int count);

    static QString helpTitle();
    static QStringList helpLines();

    static QString perspectiveViewName();
    static QString frontViewName();
    static QString sideViewName();
    static QString objectViewName(const QString &objectName);

    static QString curveDrawingStatus();

    static QString copyPlainText(int count);
    static QString copiedMessage(int count);
    static QString nothingCopiedMessage();
    static QString selectToCopyMessage();
    static QString pastedMessage(int count);

    static QString deleteTitle();
    // names: the names of the objects to delete (one or more).
    static QString deleteQuestion(const QStringList &names);
    static QString calibrationClosingNotice(const QStringList &projectorNames);
};
