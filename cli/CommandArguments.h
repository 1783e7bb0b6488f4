#pragma once

#include <QString>
#include <QStringList>

// The command-line tool's arguments as text. Qt reads arguments as UTF-8, so a file name in another
// encoding (a Latin-1 name from an old archive or another system) would turn into
// replacement characters and name no file. Such an argument is handed on through a
// descriptor held open: on its folder ("/proc/self/fd/N/name") when only the folder's name is
// not UTF-8, so that files beside it and outputs still resolve, else on the existing file
// itself ("/proc/self/fd/N"), which every reader opens like the file.
// False with the reason when an argument is neither UTF-8 nor an existing path.
bool decodeCommandArguments(int argc, char **argv, QStringList *arguments, QString *error);
