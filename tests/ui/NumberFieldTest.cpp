#include "MainWindowTestSupport.h"

#include "app/DecimalSeparatorGuard.h"
#include "app/MainWindow.h"
#include "app/VantreoProxyStyle.h"
#include "guide/ui/GuideTab.h"
#include "guide/ui/LayerListWidget.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QTest>

#include <cmath>

namespace {

double relativeLuminance(const QColor &c)
{
    auto channel = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}

// The contrast of text over its background, a translucent text colour blended first.
double contrast(const QColor &text, const QColor &background)
{
    const double a = text.alphaF();
    const QColor blended = QColor::fromRgbF(text.redF() * a + background.redF() * (1 - a),
                                            text.greenF() * a + background.greenF() * (1 - a),
                                            text.blueF() * a + background.blueF() * (1 - a));
    const double l1 = relativeLuminance(blended), l2 = relativeLuminance(background);
    return (std::max(l1, l2) + 0.05) / (std::min(l1, l2) + 0.05);
}

// Typed into the field and committed with Enter.
void typeInto(QAbstractSpinBox *field, const QString &text)
{
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, text);
    QTest::keyClick(field, Qt::Key_Return);
}

class NumberFieldTest : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        m_locale = QLocale();
        m_palette = QApplication::palette();
        DecimalSeparatorGuard::install();
    }
    void TearDown() override
    {
        QLocale::setDefault(m_locale);
        QApplication::setPalette(m_palette);
        ShellSettingsFixture::TearDown();
    }
    QLocale m_locale;
    QPalette m_palette;
};

} // namespace

TEST_F(NumberFieldTest, CommaTypedAsDecimalSeparatorIsNeverReadAsDigitGrouping)
{
    QDoubleSpinBox decimal;
    decimal.setRange(0.0, 100000.0);
    decimal.setDecimals(3);
    decimal.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&decimal));
    ASSERT_EQ(decimal.locale().decimalPoint(), QStringLiteral("."));
    typeInto(&decimal, QStringLiteral("1,5"));
    EXPECT_DOUBLE_EQ(decimal.value(), 1.5);
    typeInto(&decimal, QStringLiteral("12.25"));
    EXPECT_DOUBLE_EQ(decimal.value(), 12.25);

    // A whole-number field keeps the whole part instead of reading 15.
    QSpinBox whole;
    whole.setRange(0, 100000);
    whole.setValue(7);
    whole.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&whole));
    typeInto(&whole, QStringLiteral("1,5"));
    EXPECT_EQ(whole.value(), 1);
    typeInto(&whole, QStringLiteral("2.75"));
    EXPECT_EQ(whole.value(), 2);
    typeInto(&whole, QStringLiteral("1500"));
    EXPECT_EQ(whole.value(), 1500); // digits after a fresh start count again

    // Pasted text with a grouping comma is refused, not read as a thousand.
    bool ok = true;
    whole.locale().toInt(QStringLiteral("1,500"), &ok);
    EXPECT_FALSE(ok);
}

TEST_F(NumberFieldTest, GuideThrowRatioTakesACommaDecimal)
{
    GuideTab guide;
    guide.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&guide));
    auto *throwRatio = guide.findChild<QDoubleSpinBox *>(QStringLiteral("vantreoGuideThrowRatio"));
    ASSERT_NE(throwRatio, nullptr);
    typeInto(throwRatio, QStringLiteral("1,5"));
    EXPECT_DOUBLE_EQ(guide.settings().projectorThrowRatio, 1.5);
}

// Hint texts against what they are drawn on, in the program's own palette.
TEST_F(NumberFieldTest, HintTextsMeetFourAndAHalfToOneContrast)
{
    VantreoProxyStyle style;
    QApplication::setPalette(style.standardPalette());

    auto window = std::make_unique<MainWindow>();
    window->setProperty("skipStartupSample", true);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    auto *startHint = window->findChild<QLabel *>(QStringLiteral("vantreoStartHint"));
    ASSERT_NE(startHint, nullptr);
    startHint->ensurePolished();
    const QColor window0 = window->palette().color(QPalette::Window);
    EXPECT_GE(contrast(startHint->palette().color(startHint->foregroundRole()), window0), 4.5);

    auto *guide = qobject_cast<GuideTab *>(window->addGuideTab());
    ASSERT_NE(guide, nullptr);
    for (const char *name : {"vantreoGuideGridInfo", "vantreoLayerHint"}) {
        auto *hint = guide->findChild<QLabel *>(QString::fromLatin1(name));
        ASSERT_NE(hint, nullptr) << name;
        hint->ensurePolished();
        const QColor text = hint->palette().color(hint->foregroundRole());
        const QColor background = hint->parentWidget()->palette().color(QPalette::Window);
        EXPECT_GE(contrast(text, background), 4.5) << name;
    }
    // Placeholders in fields, over the field's base colour.
    const QPalette palette = QApplication::palette();
    EXPECT_GE(contrast(palette.color(QPalette::PlaceholderText), palette.color(QPalette::Base)), 4.5);
    EXPECT_GE(contrast(palette.color(QPalette::PlaceholderText), palette.color(QPalette::Window)), 4.5);
}
