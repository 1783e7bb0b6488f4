#pragma once

#include <QStringList>

// The recent-files list: newest first, no duplicates, at most eight.
namespace vg::recent {

constexpr int kMaxRecentProjects = 8;

QStringList withOpenedFile(const QStringList &recent, const QString &path);

} // namespace vg::recent
