#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <functional>
#include <vector>

// Exit codes shared by every subcommand.
enum CliExit { CliOk = 0, CliFailure = 1, CliUsage = 2 };

struct Guide3DViewSettings;
struct ProjectDocument;

struct CliContext {
    QTextStream &out;
    QTextStream &err;
};

// One subcommand. Each lives in its own file and registers itself with a static
// CliRegistration, so adding a job never touches the dispatcher.
struct CliCommand {
    QString name;
    QString synopsis;   // "render-guide <project> [--guide N] -o <out.png>"
    QString summary;    // one line for --help
    std::function<int(const QStringList &args, CliContext &ctx)> run;
};

class CliRegistry
{
public:
    static void add(CliCommand command);
    static const std::vector<CliCommand> &all();
    static const CliCommand *find(const QString &name);
};

struct CliRegistration {
    explicit CliRegistration(CliCommand command) { CliRegistry::add(std::move(command)); }
};

// Splits a subcommand's arguments into positionals, options with a value and flags.
// Anything unknown is a usage error, reported through error().
class CliArgs
{
public:
    CliArgs(const QStringList &args, const QSet<QString> &valueOptions, const QSet<QString> &flags);

    bool ok() const { return m_error.isEmpty(); }
    QString error() const { return m_error; }
    const QStringList &positionals() const { return m_positionals; }
    bool has(const QString &option) const { return m_values.contains(option) || m_flags.contains(option); }
    QString value(const QString &option, const QString &fallback = {}) const { return m_values.value(option, fallback); }
    // Reads an integer option; a malformed value sets error() and returns fallback.
    int intValue(const QString &option, int fallback);

private:
    QStringList m_positionals;
    QHash<QString, QString> m_values;
    QSet<QString> m_flags;
    QString m_error;
};

// Prints "<usage error>\nusage: vantreoguide-cli <synopsis>" and returns CliUsage.
int cliUsageError(CliContext &ctx, const CliCommand &command, const QString &message);

// Loads a project (.vgs or bare JSON); prints "Load failed: <why>" and returns false when it cannot.
bool cliLoadProject(CliContext &ctx, const QString &path, ProjectDocument *project);

// The 3D view a command works on, by --view's index; with firstWhenUnset a negative index
// means the first view. Prints why and returns nullptr when there is no such view.
const Guide3DViewSettings *cliProjectView(CliContext &ctx, const ProjectDocument &project, int index,
                                          bool firstWhenUnset = false);
