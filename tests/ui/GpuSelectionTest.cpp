#include "MainWindowTestSupport.h"

#include "app/GpuSelectionDialog.h"
#include "app/MainWindow.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QStatusBar>
#include <QTest>

namespace {

GpuAdapterInfo adapter(const char *description, quint32 low, quint64 memory, bool highPerformance)
{
    GpuAdapterInfo a;
    a.description = QString::fromLatin1(description);
    a.luidLowPart = low;
    a.vendorId = 0x10de;
    a.deviceId = 0x2684;
    a.dedicatedVideoMemory = memory;
    a.highPerformance = highPerformance;
    return a;
}

QStringList comboEntries(const GpuSelectionDialog &dialog)
{
    QStringList entries;
    for (int i = 0; i < dialog.adapterCombo()->count(); ++i)
        entries << dialog.adapterCombo()->itemText(i);
    return entries;
}

const QString kRestartNote = QStringLiteral(
    "GPU selection requires restarting VantreoGuide. Already opened GPU previews keep using the current GPU until the "
    "program restarts.");

} // namespace

TEST(GpuSelectionDialog, ListsAutoThenAdaptersAndSelectsStoredKey)
{
    const QList<GpuAdapterInfo> adapters{adapter("Integrated", 0x10, 0, false),
                                         adapter("Discrete", 0x100, 8589934592ull, true)};
    GpuSelectionDialog dialog(adapters, gpuAdapterKey(adapters.at(1)));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("GPU Selection"));
    EXPECT_EQ(comboEntries(dialog), (QStringList{QStringLiteral("Auto (High Performance GPU)"), QStringLiteral("Integrated"),
                                                 QStringLiteral("Discrete (8.0 GB VRAM, High Performance)")}));
    EXPECT_EQ(dialog.selectedKey(), gpuAdapterKey(adapters.at(1)));
    EXPECT_EQ(dialog.notes(), QStringList{kRestartNote});

    GpuSelectionDialog automatic(adapters, QStringLiteral("auto"));
    EXPECT_EQ(automatic.selectedKey(), QStringLiteral("auto"));
    EXPECT_EQ(automatic.adapterCombo()->currentIndex(), 0);
}

TEST(GpuSelectionDialog, UnavailableKeyAndEmptyAdapterList)
{
    const QString stale = QStringLiteral("luid:00000000:00000001:vendor:00001002:device:00000001:subsys:00000000:rev:00000000");
    GpuSelectionDialog dialog({}, stale);
    EXPECT_EQ(comboEntries(dialog),
              (QStringList{QStringLiteral("Auto (High Performance GPU)"), QStringLiteral("Unavailable GPU")}));
    EXPECT_EQ(dialog.selectedKey(), stale); // accepting unchanged keeps the stored key
    EXPECT_EQ(dialog.notes(),
              (QStringList{QStringLiteral("Selected GPU is unavailable"),
                           QStringLiteral("No hardware GPU adapter was reported by the system. Auto mode will use the "
                                          "GPU fallback path."),
                           kRestartNote}));
}

class GpuSelectionWindowTest : public ShellSettingsFixture
{
};

TEST_F(GpuSelectionWindowTest, AcceptingStoresKeyAndAsksToRestart)
{
    MainWindow window;
    window.setProperty("skipStartupSample", true);
    window.show();
    EXPECT_EQ(window.gpuAdapterKey(), QStringLiteral("auto"));

    window.applyGpuSelection(QStringLiteral("auto"));
    EXPECT_EQ(window.statusBar()->currentMessage(), QStringLiteral("GPU selection unchanged."));
    EXPECT_FALSE(QSettings().contains(QStringLiteral("graphics/adapterKey")));

    QStringList launched;
    window.setRestartLauncher([&](const QString &program, const QStringList &arguments) {
        launched = QStringList{program} + arguments;
        return true;
    });
    const QString key = gpuAdapterKey(adapter("Discrete", 0x100, 0, true));
    auto seen = answerNextMessageBox(QStringLiteral("Later"));
    window.applyGpuSelection(key);
    EXPECT_EQ(QSettings().value(QStringLiteral("graphics/adapterKey")).toString(), key);
    EXPECT_EQ(seen->title, QStringLiteral("GPU Selection"));
    EXPECT_EQ(seen->text, QStringLiteral("GPU selection was saved."));
    EXPECT_EQ(seen->informativeText, QStringLiteral("Restart VantreoGuide now to apply it to all GPU previews."));
    EXPECT_EQ(seen->buttons, (QStringList{QStringLiteral("Restart Now"), QStringLiteral("Later")}));
    EXPECT_EQ(window.statusBar()->currentMessage(), QStringLiteral("GPU selection saved. Restart required."));
    EXPECT_TRUE(launched.isEmpty());

    // A stored key is read back by the next window.
    MainWindow second;
    EXPECT_EQ(second.gpuAdapterKey(), key);

    // "Restart Now" launches the same program with the same arguments, then closes.
    answerNextMessageBox(QStringLiteral("Restart Now"));
    window.applyGpuSelection(QStringLiteral("auto"));
    ASSERT_FALSE(launched.isEmpty());
    EXPECT_EQ(launched.first(), QCoreApplication::applicationFilePath());
    EXPECT_EQ(launched.mid(1), QCoreApplication::arguments().mid(1));
    EXPECT_FALSE(window.isVisible());
}

TEST_F(GpuSelectionWindowTest, FailedRestartWarns)
{
    MainWindow window;
    window.setProperty("skipStartupSample", true);
    window.show();
    window.setRestartLauncher([](const QString &, const QStringList &) { return false; });
    std::shared_ptr<MessageBoxAnswer> warning;
    answerNextMessageBox([&warning](QMessageBox *box) {
        // After "Restart Now" the warning box follows.
        warning = answerNextMessageBox(QMessageBox::Ok);
        for (QAbstractButton *button : box->buttons()) {
            if (button->text() == QStringLiteral("Restart Now"))
                return button;
        }
        return box->buttons().first();
    });
    window.applyGpuSelection(QStringLiteral("luid:00000000:00000100:vendor:000010de:device:00002684:subsys:00000000:rev:00000000"));
    ASSERT_TRUE(warning);
    EXPECT_EQ(warning->text, QStringLiteral("VantreoGuide could not restart automatically. Please restart it manually."));
    EXPECT_TRUE(window.isVisible());
}

TEST_F(GpuSelectionWindowTest, DialogReadsAdaptersFromTheConfiguredTree)
{
    QTemporaryDir dir;
    const QString device = dir.filePath(QStringLiteral("card0/device"));
    ASSERT_TRUE(QDir().mkpath(device));
    for (const auto &[name, value] : {std::pair{"vendor", "0x1002"}, std::pair{"device", "0x73df"},
                                      std::pair{"uevent", "DRIVER=amdgpu\nPCI_SLOT_NAME=0000:03:00.0"}}) {
        QFile file(device + QLatin1Char('/') + QLatin1String(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(value);
    }
    MainWindow window;
    window.setProperty("skipStartupSample", true);
    window.setGpuDrmRoot(dir.path());
    QStringList entries;
    onNextModal([&entries](QWidget *modal) {
        auto *dialog = qobject_cast<GpuSelectionDialog *>(modal);
        ASSERT_NE(dialog, nullptr);
        for (int i = 0; i < dialog->adapterCombo()->count(); ++i)
            entries << dialog->adapterCombo()->itemText(i);
        dialog->reject();
    });
    window.showGpuSelectionDialog();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_TRUE(entries.at(1).endsWith(QStringLiteral("(High Performance)")));
}
