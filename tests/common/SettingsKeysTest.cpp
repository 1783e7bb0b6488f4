#include "common/SettingsKeys.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// Program settings of the test live in a temporary folder, never the user's.
class SettingsKeysTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        QCoreApplication::setOrganizationName(QStringLiteral("VantreoSolution"));
        QCoreApplication::setApplicationName(QStringLiteral("VantreoGuideSettingsTests"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir.path());
        QSettings().clear();
    }
    void TearDown() override { QSettings().clear(); }

    QTemporaryDir m_dir;
};

} // namespace

TEST_F(SettingsKeysTest, AbsentValuesReadAsTheirDeclaredFallback)
{
    EXPECT_DOUBLE_EQ(Settings::uiScale.read(), 1.0);
    EXPECT_EQ(Settings::uiLanguage.read(), QStringLiteral("en"));
    EXPECT_EQ(Settings::graphicsAdapter.read(), QStringLiteral("auto"));
    EXPECT_TRUE(Settings::autoUpdate.read());
    EXPECT_TRUE(Settings::projectFile.read().isEmpty());
    EXPECT_TRUE(Settings::recentProjects.read().isEmpty());
}

TEST_F(SettingsKeysTest, WrittenValuesComeBackUnderTheKeysOlderVersionsUsed)
{
    Settings::uiScale.write(1.3);
    Settings::autoUpdate.write(false);
    Settings::recentProjects.write({QStringLiteral("/a.vgs"), QStringLiteral("/b.vgs")});
    Settings::canvasExportDirectory.write(QStringLiteral("/shows/wall"));
    // A rename of a key would silently forget every user's choice.
    const QSettings settings;
    EXPECT_DOUBLE_EQ(settings.value(QStringLiteral("ui/scale")).toDouble(), 1.3);
    EXPECT_FALSE(settings.value(QStringLiteral("updates/autoUpdate")).toBool());
    EXPECT_EQ(settings.value(QStringLiteral("paths/recentProgramSettingsFiles")).toStringList().size(), 2);
    EXPECT_EQ(settings.value(QStringLiteral("paths/canvasExportDirectory")).toString(), QStringLiteral("/shows/wall"));
    Settings::canvasExportDirectory.write(QString());
    Settings::uiFont.write(QStringLiteral("Sans,12"));
    Settings::uiFont.remove();
    EXPECT_FALSE(QSettings().contains(QStringLiteral("ui/font")));
}

TEST_F(SettingsKeysTest, ANumberThatIsNotANumberReadsAsTheFallback)
{
    QSettings().setValue(QStringLiteral("ui/scale"), QStringLiteral("large"));
    EXPECT_DOUBLE_EQ(Settings::uiScale.read(), 1.0);
}
