#include "cli/CliCommand.h"

#include "project/ProjectFile.h"

namespace {
std::vector<CliCommand> &registry()
{
    static std::vector<CliCommand> commands;
    return commands;
}
} // namespace

void CliRegistry::add(CliCommand command)
{
    registry().push_back(std::move(command));
}

const std::vector<CliCommand> &CliRegistry::all()
{
    return registry();
}

const CliCommand *CliRegistry::find(const QString &name)
{
    for (const CliCommand &command : registry()) {
        if (command.name == name)
            return &command;
    }
    return nullptr;
}

CliArgs::CliArgs(const QStringList &args, const QSet<QString> &valueOptions, const QSet<QString> &flags)
{
    for (int i = 0; i < args.size(); ++i) {
        const QString &arg = args.at(i);
        if (arg.startsWith(QLatin1String("--")) || (arg.startsWith(QLatin1Char('-')) && arg.size() == 2 && !arg.at(1).isDigit())) {
            if (valueOptions.contains(arg)) {
                if (i + 1 >= args.size()) {
                    m_error = QStringLiteral("%1 needs a value.").arg(arg);
                    return;
                }
                m_values.insert(arg, args.at(++i));
            } else if (flags.contains(arg)) {
                m_flags.insert(arg);
            } else {
                m_error = QStringLiteral("Unknown option %1.").arg(arg);
                return;
            }
        } else {
            m_positionals.append(arg);
        }
    }
}

int CliArgs::intValue(const QString &option, int fallback)
{
    if (!m_values.contains(option))
        return fallback;
    bool ok = false;
    const int v = m_values.value(option).toInt(&ok);
    if (!ok) {
        if (m_error.isEmpty())
            m_error = QStringLiteral("%1 takes a whole number, not \"%2\".").arg(option, m_values.value(option));
        return fallback;
    }
    return v;
}

int cliUsageError(CliContext &ctx, const CliCommand &command, const QString &message)
{
    ctx.err << message << "\nusage: vantreoguide-cli " << command.synopsis << Qt::endl;
    return CliUsage;
}

bool cliLoadProject(CliContext &ctx, const QString &path, ProjectDocument *project)
{
    QString error;
    if (loadProjectDocument(path, project, &error))
        return true;
    ctx.err << "Load failed: " << error << Qt::endl;
    return false;
}

const Guide3DViewSettings *cliProjectView(CliContext &ctx, const ProjectDocument &project, int index, bool firstWhenUnset)
{
    const int count = projectViewCount(project);
    if (index < 0 && firstWhenUnset) {
        if (count == 0) {
            ctx.err << "The project has no 3D view." << Qt::endl;
            return nullptr;
        }
        index = 0;
    }
    if (const Guide3DViewSettings *view = projectView(project, index))
        return view;
    ctx.err << QStringLiteral("The project has %1 3D view(s); there is no view %2.").arg(count).arg(index) << Qt::endl;
    return nullptr;
}
