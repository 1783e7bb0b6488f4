#pragma once

#include "scene/GuideArraySlices.h"
#include "scene/GuideObject.h"

#include <QStringList>
#include <QWidget>

#include <functional>
#include <vector>

class QFormLayout;
class QVBoxLayout;
class QLabel;

// The property panel of the 3D view: every field that applies to the selected object's
// kind. Edits are reported as a whole edited record; the owner applies them through the
// scene's undo snapshots and hands the result back with setObject().
class ScenePropertyPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ScenePropertyPanel(QWidget *parent = nullptr);

    // index -1 (or no object) shows the empty panel.
    void setObject(int index, const GuideObject *object);
    int objectIndex() const { return m_index; }

    // Titles of the project's guides, in guide order, for the texture source choosers.
    void setGuideNames(const QStringList &names);
    // The scene's guide objects (index, name): a projector projects one of them.
    void setGuideObjects(const QList<QPair<int, QString>> &objects);
    // The state of an object's movie or live source (the 3D view's sources).
    void setVideoStatusProvider(std::function<QString(const GuideObject &, bool projectorImage)> provider)
    {
        m_videoStatus = std::move(provider);
    }
    // The guides' projector arrays, in guide order: a projector may show one slice.
    void setGuideArrays(const QVector<GuideArraySlices> &arrays);

Q_SIGNALS:
    void objectEdited(int index, const GuideObject &edited);

protected:
    void changeEvent(QEvent *event) override;

private:
    using Getter = std::function<double(const GuideObject &)>;
    using Setter = std::function<void(GuideObject &, double)>;

    void rebuild();
    void refresh();
    void commit(const std::function<void(GuideObject &)> &change);

    QFormLayout *addGroup(const QString &title);
    void addNumber(QFormLayout *form, const QString &label, Getter get, Setter set, double min,
                   double max, int decimals, double step, const QString &suffix = {});
    void addFloat(QFormLayout *form, const QString &label, float GuideObject::*member, double min,
                  double max, int decimals, double step, const QString &suffix = {});
    void addInt(QFormLayout *form, const QString &label, int GuideObject::*member, int min, int max,
                const QString &suffix = {});
    void addBool(QFormLayout *form, const QString &label, bool GuideObject::*member);
    void addChoice(QFormLayout *form, const QString &label, int GuideObject::*member,
                   const QStringList &items, int firstValue = 0);
    void addText(QFormLayout *form, const QString &label, QString GuideObject::*member);
    void addFile(QFormLayout *form, const QString &label, QString GuideObject::*member,
                 const QString &filter);
    void addColor(QFormLayout *form, const QString &label, QColor GuideObject::*member);
    void addGuideChoice(QFormLayout *form, const QString &label, int GuideObject::*member);
    void addSliceChoice(QFormLayout *form);
    void addIndexedChoice(QFormLayout *form, const QString &label, int GuideObject::*member,
                          const QList<QPair<int, QString>> &entries, const QString &missingText);

    void buildCommon();
    void buildTransform();
    void buildDisplay();
    void buildTexture();
    void buildShape();
    void buildProjector();
    void buildFootprint();
    void addVideoSourceRows(QFormLayout *form, bool projectorImage);
    void addViewOutputRows(QFormLayout *form);

    int m_index = -1;
    int m_builtKind = -2;
    int m_builtIndex = -2;
    GuideObject m_object;
    QStringList m_guideNames;
    QList<QPair<int, QString>> m_guideObjects;
    QVector<GuideArraySlices> m_guideArrays;
    QVBoxLayout *m_layout = nullptr;
    QLabel *m_emptyLabel = nullptr;
    QWidget *m_content = nullptr;
    QVBoxLayout *m_contentLayout = nullptr;
    std::vector<std::function<void(const GuideObject &)>> m_refreshers;
    bool m_refreshing = false;
    std::function<QString(const GuideObject &, bool)> m_videoStatus;
};
