#include "app/SpinBoxWheelGuard.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace {

void wheelOver(QWidget *widget, int steps)
{
    const QPointF at(widget->width() / 2.0, widget->height() / 2.0);
    QWheelEvent wheel(at, widget->mapToGlobal(at), QPoint(), QPoint(0, -120 * steps), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &wheel);
}

} // namespace

TEST(SpinBoxWheelGuard, TheWheelScrollsThePanelUntilTheSpinBoxIsClicked)
{
    SpinBoxWheelGuard::install();
    QScrollArea area;
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    QSpinBox *spin = nullptr;
    for (int i = 0; i < 40; ++i) {
        auto *box = new QSpinBox;
        box->setRange(0, 100);
        box->setValue(50);
        layout->addWidget(box);
        if (i == 2)
            spin = box;
    }
    area.setWidget(content);
    area.resize(200, 150);
    area.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&area));
    QApplication::setActiveWindow(&area); // focus events need an active window

    // Scrolling over an untouched spin box moves the panel, not the value.
    wheelOver(spin, 1);
    EXPECT_EQ(spin->value(), 50);
    EXPECT_GT(area.verticalScrollBar()->value(), 0);
    EXPECT_FALSE(spin->property("vantreoSpinBoxWheelArmed").toBool());

    // After a click it takes the wheel; the wheel over its editor counts too.
    area.verticalScrollBar()->setValue(0);
    QTest::mouseClick(spin, Qt::LeftButton, Qt::NoModifier, QPoint(5, spin->height() / 2));
    EXPECT_TRUE(spin->property("vantreoSpinBoxWheelArmed").toBool());
    const int scrolled = area.verticalScrollBar()->value();
    wheelOver(spin, -1);
    EXPECT_EQ(spin->value(), 51);
    EXPECT_EQ(area.verticalScrollBar()->value(), scrolled);

    // Losing focus disarms it again.
    spin->clearFocus();
    EXPECT_FALSE(spin->property("vantreoSpinBoxWheelArmed").toBool());
    wheelOver(spin, -1);
    EXPECT_EQ(spin->value(), 51);
}
