#include "common/GpuAdapter.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct FakeCard
{
    QString card;      // "card0"
    QString slot;      // "0000:00:02.0"
    QString vendor;    // "0x8086"
    QString device;
    QString subsystemVendor = QStringLiteral("0x0000");
    QString subsystemDevice = QStringLiteral("0x0000");
    QString revision = QStringLiteral("0x00");
    QString pciClass = QStringLiteral("0x030000");
    QString bootVga;   // "1", "0" or empty for no file
    QString vram;      // bytes or empty for no file
    QString driver = QStringLiteral("i915");
};

void writeFile(const QString &path, const QString &text)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(text.toUtf8() + "\n");
}

void addCard(const QString &root, const FakeCard &c)
{
    const QString dev = root + QLatin1Char('/') + c.card + QStringLiteral("/device");
    ASSERT_TRUE(QDir().mkpath(dev));
    writeFile(dev + QStringLiteral("/vendor"), c.vendor);
    writeFile(dev + QStringLiteral("/device"), c.device);
    writeFile(dev + QStringLiteral("/subsystem_vendor"), c.subsystemVendor);
    writeFile(dev + QStringLiteral("/subsystem_device"), c.subsystemDevice);
    writeFile(dev + QStringLiteral("/revision"), c.revision);
    writeFile(dev + QStringLiteral("/class"), c.pciClass);
    writeFile(dev + QStringLiteral("/uevent"),
              QStringLiteral("DRIVER=%1\nPCI_CLASS=30000\nPCI_SLOT_NAME=%2\n").arg(c.driver, c.slot));
    if (!c.bootVga.isEmpty())
        writeFile(dev + QStringLiteral("/boot_vga"), c.bootVga);
    if (!c.vram.isEmpty())
        writeFile(dev + QStringLiteral("/mem_info_vram_total"), c.vram);
}

FakeCard makeCard(const char *card, const char *slot, const char *vendor, const char *device)
{
    FakeCard c;
    c.card = QString::fromLatin1(card);
    c.slot = QString::fromLatin1(slot);
    c.vendor = QString::fromLatin1(vendor);
    c.device = QString::fromLatin1(device);
    return c;
}

GpuAdapterInfo adapterWith(quint32 high, quint32 low, quint32 vendor, quint32 device, quint32 subsys, quint32 rev)
{
    GpuAdapterInfo a;
    a.luidHighPart = high;
    a.luidLowPart = low;
    a.vendorId = vendor;
    a.deviceId = device;
    a.subsystemId = subsys;
    a.revision = rev;
    return a;
}

} // namespace

TEST(GpuAdapter, KeyIsZeroFilledLowerCaseHex)
{
    const GpuAdapterInfo a = adapterWith(0, 0x1A2B, 0x10DE, 0x2684, 0, 0xA1);
    EXPECT_EQ(gpuAdapterKey(a).toStdString(),
              "luid:00000000:00001a2b:vendor:000010de:device:00002684:subsys:00000000:rev:000000a1");
    // Full 32-bit values keep all eight digits.
    const GpuAdapterInfo b = adapterWith(0xFFFFFFFFu, 0x80000000u, 0x1002, 0x744C, 0x0E3B1DA2, 0xC8);
    EXPECT_EQ(gpuAdapterKey(b).toStdString(),
              "luid:ffffffff:80000000:vendor:00001002:device:0000744c:subsys:0e3b1da2:rev:000000c8");
}

TEST(GpuAdapter, LabelTagsAndFallbackName)
{
    GpuAdapterInfo a;
    EXPECT_EQ(gpuAdapterLabel(a).toStdString(), "Unknown GPU");
    a.description = QStringLiteral("   ");
    EXPECT_EQ(gpuAdapterLabel(a).toStdString(), "Unknown GPU");

    a.description = QStringLiteral("  Example RX 7900  ");
    a.dedicatedVideoMemory = 8589934592ull;
    EXPECT_EQ(gpuAdapterLabel(a).toStdString(), "Example RX 7900 (8.0 GB VRAM)");
    a.highPerformance = true;
    EXPECT_EQ(gpuAdapterLabel(a).toStdString(), "Example RX 7900 (8.0 GB VRAM, High Performance)");
    a.dedicatedVideoMemory = 0;
    EXPECT_EQ(gpuAdapterLabel(a).toStdString(), "Example RX 7900 (High Performance)");
    a.dedicatedVideoMemory = 536870912ull; // 0.5 GB keeps its decimal
    a.highPerformance = false;
    EXPECT_EQ(gpuAdapterLabel(a).toStdString(), "Example RX 7900 (0.5 GB VRAM)");
}

TEST(GpuAdapter, EnumeratesFakeSysfsTreeAndMarksDiscreteAdapter)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString root = dir.path() + QStringLiteral("/drm");
    FakeCard integrated = makeCard("card0", "0000:00:02.0", "0x8086", "0x46a6");
    integrated.revision = QStringLiteral("0x0c");
    integrated.bootVga = QStringLiteral("1");
    addCard(root, integrated);

    FakeCard discrete = makeCard("card1", "0000:01:00.0", "0x1002", "0x73df");
    discrete.subsystemVendor = QStringLiteral("0x1043");
    discrete.subsystemDevice = QStringLiteral("0x16c2");
    discrete.revision = QStringLiteral("0xc1");
    discrete.bootVga = QStringLiteral("0");
    discrete.vram = QStringLiteral("12868124672");
    discrete.driver = QStringLiteral("amdgpu");
    addCard(root, discrete);

    // Things that are not adapters: a connector, a render node, a virtual card, a non-display PCI class.
    ASSERT_TRUE(QDir().mkpath(root + QStringLiteral("/card1-DP-1")));
    ASSERT_TRUE(QDir().mkpath(root + QStringLiteral("/renderD128/device")));
    ASSERT_TRUE(QDir().mkpath(root + QStringLiteral("/card2/device")));
    FakeCard audio = makeCard("card3", "0000:01:00.1", "0x1002", "0xab28");
    audio.pciClass = QStringLiteral("0x040300");
    addCard(root, audio);

    const QString ids = dir.path() + QStringLiteral("/pci.ids");
    writeFile(ids, QStringLiteral("# comment\n1002  Advanced Micro Devices\n\t73df  Navi 22 [Example 6700]\n"
                                  "\t\t1043 16c2  Board\n8086  Intel Corporation\n\t46a0  Other\n"));

    const QList<GpuAdapterInfo> adapters = enumerateGpuAdapters(root, ids);
    ASSERT_EQ(adapters.size(), 2);

    const GpuAdapterInfo &i = adapters.at(0);
    EXPECT_EQ(i.cardName, QStringLiteral("card0"));
    EXPECT_EQ(i.vendorId, 0x8086u);
    EXPECT_EQ(i.deviceId, 0x46a6u);
    EXPECT_EQ(i.revision, 0x0cu);
    EXPECT_EQ(i.luidHighPart, 0u);
    EXPECT_EQ(i.luidLowPart, (0u << 8) | (2u << 3) | 0u);
    EXPECT_EQ(i.dedicatedVideoMemory, 0u);
    EXPECT_FALSE(i.highPerformance);
    // Vendor known, device not: the vendor name with the ids and driver.
    EXPECT_EQ(i.description.toStdString(), "Intel Corporation PCI 8086:46a6 (i915)");

    const GpuAdapterInfo &d = adapters.at(1);
    EXPECT_EQ(d.description.toStdString(), "Advanced Micro Devices Navi 22 [Example 6700]");
    EXPECT_EQ(d.luidLowPart, 0x100u);
    EXPECT_EQ(d.subsystemId, 0x16c21043u);
    EXPECT_EQ(d.revision, 0xc1u);
    EXPECT_EQ(d.dedicatedVideoMemory, 12868124672ull);
    EXPECT_TRUE(d.highPerformance);
    EXPECT_EQ(gpuAdapterLabel(d).toStdString(),
              "Advanced Micro Devices Navi 22 [Example 6700] (12.0 GB VRAM, High Performance)");
    EXPECT_EQ(driPrimeValueForAdapter(d), QStringLiteral("pci-0000_01_00_0"));
}

TEST(GpuAdapter, HighPerformanceFallsBackToNonBootAdapterThenFirst)
{
    QTemporaryDir dir;
    const QString root = dir.path();
    // Neither driver reports memory (nouveau-like): the one not driving the boot display wins.
    FakeCard a = makeCard("card0", "0000:00:02.0", "0x8086", "0x1");
    a.bootVga = QStringLiteral("1");
    FakeCard b = makeCard("card10", "0000:02:00.0", "0x10de", "0x2");
    b.bootVga = QStringLiteral("0");
    addCard(root, a);
    addCard(root, b);
    QList<GpuAdapterInfo> adapters = enumerateGpuAdapters(root, dir.path() + QStringLiteral("/none.ids"));
    ASSERT_EQ(adapters.size(), 2);
    EXPECT_EQ(adapters.at(1).cardName, QStringLiteral("card10")); // numeric, not text, order
    EXPECT_FALSE(adapters.at(0).highPerformance);
    EXPECT_TRUE(adapters.at(1).highPerformance);
    EXPECT_EQ(adapters.at(0).description.toStdString(), "PCI 8086:0001 (i915)");

    QTemporaryDir single;
    addCard(single.path(), a);
    adapters = enumerateGpuAdapters(single.path(), QStringLiteral("/nonexistent"));
    ASSERT_EQ(adapters.size(), 1);
    EXPECT_TRUE(adapters.at(0).highPerformance);

    EXPECT_TRUE(enumerateGpuAdapters(dir.path() + QStringLiteral("/missing")).isEmpty());
}

TEST(GpuAdapter, ResolvesStoredKey)
{
    QList<GpuAdapterInfo> adapters{adapterWith(0, 0x10, 0x8086, 1, 0, 0), adapterWith(0, 0x100, 0x10de, 2, 0, 0)};
    adapters[1].highPerformance = true;

    GpuAdapterResolution r = resolveGpuAdapterKey(QStringLiteral("auto"), adapters);
    EXPECT_TRUE(r.isAuto);
    EXPECT_FALSE(r.unavailable);
    EXPECT_EQ(r.adapterIndex, 1);

    r = resolveGpuAdapterKey(gpuAdapterKey(adapters.at(0)), adapters);
    EXPECT_FALSE(r.isAuto);
    EXPECT_EQ(r.adapterIndex, 0);

    r = resolveGpuAdapterKey(QStringLiteral("luid:00000000:00000000:vendor:00000001:device:00000001:subsys:00000000:rev:00000000"),
                             adapters);
    EXPECT_TRUE(r.unavailable);
    EXPECT_EQ(r.adapterIndex, 1); // falls back to the automatic choice

    r = resolveGpuAdapterKey(QStringLiteral("auto"), {});
    EXPECT_EQ(r.adapterIndex, -1);
}
