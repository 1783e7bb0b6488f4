#include "common/GpuAdapter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <tuple>

namespace {

QString hex8(quint32 value)
{
    return QStringLiteral("%1").arg(value, 8, 16, QLatin1Char('0'));
}

QString readTrimmed(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll()).trimmed();
}

// sysfs writes ids as "0x10de"; a file that is missing or unreadable gives 0.
quint64 readNumber(const QString &path, bool *present = nullptr)
{
    const QString text = readTrimmed(path);
    bool ok = false;
    quint64 value = 0;
    if (!text.isEmpty())
        value = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive) ? text.mid(2).toULongLong(&ok, 16)
                                                                          : text.toULongLong(&ok, 10);
    if (present)
        *present = ok;
    return ok ? value : 0;
}

QString ueventValue(const QString &ueventText, const QString &key)
{
    const QString prefix = key + QLatin1Char('=');
    for (const QString &line : ueventText.split(QLatin1Char('\n'))) {
        if (line.startsWith(prefix))
            return line.mid(prefix.size()).trimmed();
    }
    return QString();
}

// "0000:01:00.0" -> domain 0, bus 1, device 0, function 0.
bool parsePciSlot(const QString &slot, quint32 *domain, quint32 *bus, quint32 *device, quint32 *function)
{
    static const QRegularExpression pattern(
        QStringLiteral("^([0-9a-fA-F]{1,8}):([0-9a-fA-F]{1,2}):([0-9a-fA-F]{1,2})\\.([0-7])$"));
    const QRegularExpressionMatch match = pattern.match(slot);
    if (!match.hasMatch())
        return false;
    *domain = match.captured(1).toUInt(nullptr, 16);
    *bus = match.captured(2).toUInt(nullptr, 16);
    *device = match.captured(3).toUInt(nullptr, 16);
    *function = match.captured(4).toUInt(nullptr, 16);
    return true;
}

QString defaultPciIdsFile()
{
    for (const QString &candidate : {QStringLiteral("/usr/share/misc/pci.ids"),
                                     QStringLiteral("/usr/share/hwdata/pci.ids")}) {
        if (QFileInfo::exists(candidate))
            return candidate;
    }
    return QString();
}

// Looks up "vendor name" and "device name" in a pci.ids database (vendor lines at
// column 0, device lines indented by one tab, subsystems by two).
bool lookUpPciNames(const QString &pciIdsFile, quint32 vendorId, quint32 deviceId, QString *vendorName,
                    QString *deviceName)
{
    QFile file(pciIdsFile);
    if (pciIdsFile.isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    const QString vendorHex = QStringLiteral("%1").arg(vendorId, 4, 16, QLatin1Char('0'));
    const QString deviceHex = QStringLiteral("%1").arg(deviceId, 4, 16, QLatin1Char('0'));
    bool inVendor = false;
    while (!file.atEnd()) {
        QString line = QString::fromUtf8(file.readLine());
        while (line.endsWith(QLatin1Char('\n')) || line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        if (!line.startsWith(QLatin1Char('\t'))) {
            if (inVendor)
                break; // the vendor's block is over and the device was not listed
            if (line.startsWith(QLatin1String("C ")))
                break; // device classes follow the vendor list
            if (line.left(4).compare(vendorHex, Qt::CaseInsensitive) == 0 && line.size() > 4
                && line.at(4).isSpace()) {
                inVendor = true;
                *vendorName = line.mid(4).trimmed();
            }
            continue;
        }
        if (!inVendor || line.startsWith(QLatin1String("\t\t")))
            continue;
        const QString entry = line.mid(1);
        if (entry.left(4).compare(deviceHex, Qt::CaseInsensitive) == 0 && entry.size() > 4 && entry.at(4).isSpace()) {
            *deviceName = entry.mid(4).trimmed();
            return true;
        }
    }
    return !vendorName->isEmpty();
}

int cardNumber(const QString &name)
{
    return name.mid(4).toInt();
}

} // namespace

QString gpuAdapterKey(const GpuAdapterInfo &adapter)
{
    return QStringLiteral("luid:%1:%2:vendor:%3:device:%4:subsys:%5:rev:%6")
        .arg(hex8(adapter.luidHighPart), hex8(adapter.luidLowPart), hex8(adapter.vendorId), hex8(adapter.deviceId),
             hex8(adapter.subsystemId), hex8(adapter.revision));
}

QString gpuAdapterLabel(const GpuAdapterInfo &adapter)
{
    QString label = adapter.description.trimmed();
    if (label.isEmpty())
        label = QCoreApplication::translate("GpuAdapter", "Unknown GPU");
    QStringList tags;
    if (adapter.dedicatedVideoMemory > 0) {
        const double gigabytes = double(adapter.dedicatedVideoMemory) / 1073741824.0;
        tags << QCoreApplication::translate("GpuAdapter", "%1 GB VRAM").arg(QString::number(gigabytes, 'f', 1));
    }
    if (adapter.highPerformance)
        tags << QCoreApplication::translate("GpuAdapter", "High Performance");
    if (!tags.isEmpty())
        label += QStringLiteral(" (") + tags.join(QStringLiteral(", ")) + QLatin1Char(')');
    return label;
}

QList<GpuAdapterInfo> enumerateGpuAdapters(const QString &drmRoot, const QString &pciIdsFile)
{
    QList<GpuAdapterInfo> adapters;
    QDir root(drmRoot);
    if (!root.exists())
        return adapters;

    // Only the card nodes: "card0", not the connectors "card0-HDMI-A-1" or "renderD128".
    static const QRegularExpression cardPattern(QStringLiteral("^card[0-9]+$"));
    QStringList cards;
    for (const QString &name : root.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::System)) {
        if (cardPattern.match(name).hasMatch())
            cards << name;
    }
    std::sort(cards.begin(), cards.end(),
              [](const QString &a, const QString &b) { return cardNumber(a) < cardNumber(b); });

    const QString idsFile = pciIdsFile.isEmpty() ? defaultPciIdsFile() : pciIdsFile;
    QStringList seenSlots;
    for (const QString &card : cards) {
        const QString devicePath = root.filePath(card + QStringLiteral("/device"));
        bool hasVendor = false;
        const quint64 vendor = readNumber(devicePath + QStringLiteral("/vendor"), &hasVendor);
        if (!hasVendor)
            continue; // a platform or virtual device (simpledrm, vkms): not a hardware adapter
        const QString pciClass = readTrimmed(devicePath + QStringLiteral("/class"));
        if (!pciClass.isEmpty() && !pciClass.startsWith(QLatin1String("0x03")))
            continue;

        const QString uevent = readTrimmed(devicePath + QStringLiteral("/uevent"));
        QString slot = ueventValue(uevent, QStringLiteral("PCI_SLOT_NAME"));
        if (slot.isEmpty())
            slot = QFileInfo(QFileInfo(devicePath).canonicalFilePath()).fileName();
        if (!slot.isEmpty() && seenSlots.contains(slot))
            continue;
        seenSlots << slot;

        GpuAdapterInfo adapter;
        adapter.cardName = card;
        adapter.vendorId = quint32(vendor);
        adapter.deviceId = quint32(readNumber(devicePath + QStringLiteral("/device")));
        // The subsystem id combines both halves the way the system's adapter list reports it:
        // subsystem device in the high word, subsystem vendor in the low word.
        const quint32 subDevice = quint32(readNumber(devicePath + QStringLiteral("/subsystem_device")));
        const quint32 subVendor = quint32(readNumber(devicePath + QStringLiteral("/subsystem_vendor")));
        adapter.subsystemId = (subDevice << 16) | (subVendor & 0xffffu);
        adapter.revision = quint32(readNumber(devicePath + QStringLiteral("/revision")));
        adapter.dedicatedVideoMemory = readNumber(devicePath + QStringLiteral("/mem_info_vram_total"));
        adapter.bootVga = readTrimmed(devicePath + QStringLiteral("/boot_vga")) == QLatin1String("1");

        // The bus location stands in for the LUID: domain high, bus/device/function low.
        quint32 domain = 0, bus = 0, dev = 0, function = 0;
        if (parsePciSlot(slot, &domain, &bus, &dev, &function)) {
            adapter.pciSlot = slot;
            adapter.luidHighPart = domain;
            adapter.luidLowPart = (bus << 8) | (dev << 3) | function;
        }

        QString vendorName, deviceName;
        lookUpPciNames(idsFile, adapter.vendorId, adapter.deviceId, &vendorName, &deviceName);
        if (!deviceName.isEmpty()) {
            adapter.description = vendorName.isEmpty() ? deviceName : vendorName + QLatin1Char(' ') + deviceName;
        } else {
            const QString driver = ueventValue(uevent, QStringLiteral("DRIVER"));
            adapter.description = QStringLiteral("PCI %1:%2")
                                      .arg(adapter.vendorId, 4, 16, QLatin1Char('0'))
                                      .arg(adapter.deviceId, 4, 16, QLatin1Char('0'));
            if (!vendorName.isEmpty())
                adapter.description.prepend(vendorName + QLatin1Char(' '));
            if (!driver.isEmpty())
                adapter.description += QStringLiteral(" (%1)").arg(driver);
        }
        adapters << adapter;
    }

    if (!adapters.isEmpty()) {
        auto rank = [](const GpuAdapterInfo &a) {
            return std::make_tuple(a.dedicatedVideoMemory > 0, !a.bootVga, a.dedicatedVideoMemory);
        };
        int best = 0;
        for (int i = 1; i < adapters.size(); ++i) {
            if (rank(adapters.at(i)) > rank(adapters.at(best)))
                best = i;
        }
        adapters[best].highPerformance = true;
    }
    return adapters;
}

GpuAdapterResolution resolveGpuAdapterKey(const QString &storedKey, const QList<GpuAdapterInfo> &adapters)
{
    GpuAdapterResolution result;
    const QString key = storedKey.trimmed();
    if (!key.isEmpty() && key != QLatin1String(kGpuAdapterAutoKey)) {
        for (int i = 0; i < adapters.size(); ++i) {
            if (gpuAdapterKey(adapters.at(i)) == key) {
                result.isAuto = false;
                result.adapterIndex = i;
                return result;
            }
        }
        result.unavailable = true;
    }
    for (int i = 0; i < adapters.size(); ++i) {
        if (adapters.at(i).highPerformance) {
            result.adapterIndex = i;
            break;
        }
    }
    return result;
}

QString driPrimeValueForAdapter(const GpuAdapterInfo &adapter)
{
    if (adapter.pciSlot.isEmpty())
        return QString();
    QString value = adapter.pciSlot;
    value.replace(QLatin1Char(':'), QLatin1Char('_')).replace(QLatin1Char('.'), QLatin1Char('_'));
    return QStringLiteral("pci-") + value;
}

QString applyGpuAdapterChoiceToEnvironment(const QString &storedKey, const QString &drmRoot)
{
    if (qEnvironmentVariableIsSet("DRI_PRIME"))
        return QString();
    const QList<GpuAdapterInfo> adapters = enumerateGpuAdapters(drmRoot);
    if (adapters.size() < 2)
        return QString(); // nothing to choose between
    const GpuAdapterResolution resolution = resolveGpuAdapterKey(storedKey, adapters);
    if (resolution.adapterIndex < 0)
        return QString();
    const GpuAdapterInfo &chosen = adapters.at(resolution.adapterIndex);
    if (chosen.bootVga)
        return QString(); // the system renders there already
    const QString value = driPrimeValueForAdapter(chosen);
    if (!value.isEmpty())
        qputenv("DRI_PRIME", value.toUtf8());
    return value;
}
