#pragma once

#include "scene/GuideObject.h"

#include <QWidget>

#include <functional>

class QComboBox;
class QLabel;
class QLineEdit;
class QTimer;

// The live-source rows of the property panel, for a surface's texture or a projector's
// image: the movie decode mode with the movie's state, the NDI source and the Spout sender.
// Edits go out as changes of the object record; the state is read from the view's sources.
class SceneVideoSourceControls : public QWidget
{
    Q_OBJECT

public:
    using StatusProvider = std::function<QString(const GuideObject &, bool projectorImage)>;

    SceneVideoSourceControls(bool projectorImage, StatusProvider status, QWidget *parent = nullptr);

    // Shows the object's values (the record last applied by the owner).
    void setObject(const GuideObject &object);
    QString stateText() const;

Q_SIGNALS:
    void edited(const std::function<void(GuideObject &)> &change);

private:
    void refreshState();

    bool m_projector = false;
    StatusProvider m_status;
    GuideObject m_object;
    QComboBox *m_decode = nullptr;
    QLabel *m_state = nullptr;
    QLineEdit *m_ndi = nullptr;
    QLineEdit *m_spout = nullptr;
    QTimer *m_stateTimer = nullptr;
};

// A projector's or camera's view output: none, a Spout sender or an NDI sender, and the
// name it is published under (empty: "VantreoGuide Projector View" or "... Camera View").
class SceneViewOutputControls : public QWidget
{
    Q_OBJECT

public:
    explicit SceneViewOutputControls(QWidget *parent = nullptr);
    void setObject(const GuideObject &object);

Q_SIGNALS:
    void edited(const std::function<void(GuideObject &)> &change);

private:
    QComboBox *m_mode = nullptr;
    QLineEdit *m_name = nullptr;
};
