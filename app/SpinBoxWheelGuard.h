#pragma once

#include <QObject>

// Keeps the mouse wheel from changing spin boxes that merely sit under the cursor while a
// panel scrolls: a spin box takes the wheel only once it has been clicked (its
// "vantreoSpinBoxWheelArmed" property), until it loses focus. Unarmed, the wheel goes to
// the widgets around it, so the panel scrolls. Installed once on the application.
class SpinBoxWheelGuard : public QObject
{
    Q_OBJECT
public:
    explicit SpinBoxWheelGuard(QObject *parent = nullptr);

    static void install();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
