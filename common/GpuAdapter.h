#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

// One hardware graphics adapter as the views may use it. On Linux the record is
// filled from the DRM devices in sysfs; the key and label rules are the same on
// every platform so that a stored choice reads the same everywhere.
struct GpuAdapterInfo
{
    QString description;
    quint32 luidHighPart = 0;
    quint32 luidLowPart = 0;
    quint32 vendorId = 0;
    quint32 deviceId = 0;
    quint32 subsystemId = 0;
    quint32 revision = 0;
    quint64 dedicatedVideoMemory = 0; // bytes, 0 when the driver does not say
    bool highPerformance = false;

    // Linux only: the PCI slot ("0000:01:00.0") and DRM card node ("card1").
    QString pciSlot;
    QString cardName;
    bool bootVga = false;
};

// The stored value that leaves the choice to the system.
inline constexpr const char *kGpuAdapterAutoKey = "auto";

// "luid:%1:%2:vendor:%3:device:%4:subsys:%5:rev:%6", each part 8 lower-case hex digits.
QString gpuAdapterKey(const GpuAdapterInfo &adapter);

// Trimmed description ("Unknown GPU" when empty) plus " (tags)" when there are tags:
// "%1 GB VRAM" for dedicated memory above 0, then "High Performance".
QString gpuAdapterLabel(const GpuAdapterInfo &adapter);

// Reads the DRM devices below drmRoot (normally "/sys/class/drm"): every "cardN"
// whose device is a PCI display adapter, in card order, one record per PCI slot.
// pciIdsFile, when it exists, names the vendors and devices; otherwise the
// description is built from the ids and the kernel driver.
//
// High-performance rule: the adapter that ranks highest by (reports dedicated
// VRAM, is not the boot VGA device, dedicated memory size); the earliest card wins
// a tie. Exactly one adapter is marked when the list is not empty. On a hybrid
// laptop this picks the discrete GPU over the integrated one that drives the panel.
QList<GpuAdapterInfo> enumerateGpuAdapters(const QString &drmRoot = QStringLiteral("/sys/class/drm"),
                                           const QString &pciIdsFile = QString());

// Outcome of matching the stored "graphics/adapterKey" against the present adapters.
struct GpuAdapterResolution
{
    bool isAuto = true;        // "auto", an empty key, or nothing to match
    bool unavailable = false;  // a pinned key that matches no present adapter
    int adapterIndex = -1;     // the adapter the views should use, -1 for the system default
};

// "auto" (or empty) resolves to the high-performance adapter, or -1 with no adapters.
// A pinned key resolves to its adapter; one that matches none is reported unavailable
// and falls back to the automatic choice.
GpuAdapterResolution resolveGpuAdapterKey(const QString &storedKey, const QList<GpuAdapterInfo> &adapters);

// Mesa's DRI_PRIME value that selects the adapter ("pci-0000_01_00_0"), empty when
// the adapter has no PCI slot.
QString driPrimeValueForAdapter(const GpuAdapterInfo &adapter);

// Before the application object exists: when the chosen adapter is not the one the
// system renders with by default, sets DRI_PRIME so that every GL context of the
// process opens on it. An existing DRI_PRIME in the environment is left alone (the
// user's explicit choice wins). Returns the value set, or an empty string.
QString applyGpuAdapterChoiceToEnvironment(const QString &storedKey,
                                           const QString &drmRoot = QStringLiteral("/sys/class/drm"));
