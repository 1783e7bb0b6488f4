#include "cli/CliCommand.h"
#include "cli/CommandArguments.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

namespace {

void printHelp(QTextStream &out)
{
    out << "usage: vantreoguide-cli <command> [arguments]\n"
           "       vantreoguide-cli --help | --version\n\n"
           "Commands:\n";
    std::vector<const CliCommand *> commands;
    for (const CliCommand &c : CliRegistry::all())
        commands.push_back(&c);
    std::sort(commands.begin(), commands.end(), [](auto a, auto b) { return a->name < b->name; });
    for (const CliCommand *c : commands)
        out << "  " << c->synopsis << "\n      " << c->summary << "\n";
    out.flush();
}

// Qt warns on stderr when the session has no runtime folder (servers, cron, CI). The tool
// prints only its own output, so it provides one: a private folder of this user's, made
// like the one Qt would fall back to, or a fresh one when that name is taken.
void ensureRuntimeDirectory()
{
    if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        return;
    const QByteArray tmp = qEnvironmentVariableIsEmpty("TMPDIR") ? QByteArray("/tmp") : qgetenv("TMPDIR");
    QByteArray path = tmp + "/runtime-" + QByteArray::number(qulonglong(geteuid()));
    ::mkdir(path.constData(), 0700);
    struct stat info {};
    const bool usable = ::lstat(path.constData(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == geteuid()
                        && (info.st_mode & 0777) == 0700;
    if (!usable) {
        QByteArray name = tmp + "/vantreoguide-runtime-XXXXXX";
        if (!::mkdtemp(name.data()))
            return; // Qt falls back and says so; nothing better can be done here
        path = name;
    }
    qputenv("XDG_RUNTIME_DIR", path);
}

} // namespace

int main(int argc, char **argv)
{
    // Guides are drawn with fonts and the 3D view needs a GL context, so the tool runs a
    // GUI application; without a display it uses the off-screen platform, also when the
    // shell asks for a display platform (a profile written for the window), which could
    // not start there.
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    const bool displayPlatform = platform.isEmpty() || platform.startsWith("xcb") || platform.startsWith("wayland");
    if (displayPlatform && qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ensureRuntimeDirectory();
    QGuiApplication app(argc, argv);
    QGuiApplication::setOrganizationName(QStringLiteral("VantreoSolution"));
    QGuiApplication::setApplicationName(QStringLiteral("VantreoGuide"));
    QGuiApplication::setApplicationVersion(QStringLiteral(VG_VERSION));

    QTextStream out(stdout);
    QTextStream err(stderr);
    CliContext ctx{out, err};

    QStringList args;
    QString argumentError;
    if (!decodeCommandArguments(argc, argv, &args, &argumentError)) {
        err << argumentError << Qt::endl;
        return CliUsage;
    }
    args.removeFirst();
    if (args.isEmpty()) {
        printHelp(err);
        return CliUsage;
    }
    const QString first = args.takeFirst();
    if (first == QLatin1String("--help") || first == QLatin1String("-h") || first == QLatin1String("help")) {
        printHelp(out);
        return CliOk;
    }
    if (first == QLatin1String("--version")) {
        out << "VantreoGuide " << VG_VERSION << Qt::endl;
        return CliOk;
    }
    const CliCommand *command = CliRegistry::find(first);
    if (!command) {
        err << "Unknown command \"" << first << "\". Run vantreoguide-cli --help for the list." << Qt::endl;
        return CliUsage;
    }
    if (args.contains(QLatin1String("--help"))) {
        out << "usage: vantreoguide-cli " << command->synopsis << "\n" << command->summary << Qt::endl;
        return CliOk;
    }
    const int code = command->run(args, ctx);
    out.flush();
    err.flush();
    return code;
}
