#include "net/UpdateScripts.h"

#include <QDir>

namespace vg::net {
namespace {

// Helpers every script shares: logging, failing, waiting for the program and retried
// file operations. Values are set above this block as shell literals.
const char *const kCommonFunctions = R"SH(
log() {
    printf '%s %s\n' "$(date '+%Y-%m-%dT%H:%M:%S')" "$*" >> "$LOG_FILE"
}

fail() {
    log "failed: $*"
    exit 1
}

# The program must be gone before its files change; two minutes is far more than it needs.
wait_for_exit() {
    n=0
    while kill -0 "$PROCESS_ID" 2>/dev/null; do
        n=$((n + 1))
        [ "$n" -le 1200 ] || return 1
        sleep 0.1
    done
    return 0
}

# Copies $1 over $2 through a temporary name and a rename, so a running or half-written
# file is never left in place: up to 40 tries, 250 ms apart.
replace_file() {
    i=1
    while :; do
        if err=$( { cp -p -- "$1" "$2.update-new" && chmod +x -- "$2.update-new" && mv -f -- "$2.update-new" "$2"; } 2>&1 ); then
            return 0
        fi
        rm -f -- "$2.update-new"
        log "copy retry $i: $err"
        [ "$i" -lt 40 ] || return 1
        i=$((i + 1))
        sleep 0.25
    done
}

start_program() {
    log "starting $EXECUTABLE"
    ( cd "$APP_DIR" && nohup "$EXECUTABLE" >/dev/null 2>&1 & ) || log "start failed"
    sleep 0.3
}
)SH";

const char *const kExecutableSteps = R"SH(
log "waiting for process $PROCESS_ID to exit"
wait_for_exit || fail "The program did not exit."
sleep 0.5
log "replacing $EXECUTABLE"
replace_file "$SOURCE_FILE" "$EXECUTABLE" || fail "Could not replace target executable."
start_program
rm -f -- "$SCRIPT_PATH"
log "done"
exit 0
)SH";

const char *const kPackageFunctions = R"SH(
BACKUP_DONE=0

is_kept() {
    case "$1" in
        VantreoGuideSettings.json|backup|source|*.vgs) return 0 ;;
    esac
    return 1
}

remove_item() {
    i=1
    while :; do
        err=$(rm -rf -- "$1" 2>&1)
        if [ ! -e "$1" ] && [ ! -L "$1" ]; then
            return 0
        fi
        log "delete retry $i: $err"
        [ "$i" -lt 40 ] || return 1
        i=$((i + 1))
        sleep 0.25
    done
}

# Every item of the application folder but the kept names.
clear_application_folder() {
    for item in "$APP_DIR"/* "$APP_DIR"/.[!.]* "$APP_DIR"/..?*; do
        [ -e "$item" ] || [ -L "$item" ] || continue
        is_kept "${item##*/}" && continue
        remove_item "$item" || return 1
    done
    return 0
}

copy_content() {
    if err=$(cp -Rp -- "$1/." "$2/" 2>&1); then
        return 0
    fi
    log "copy failed: $err"
    return 1
}

# Puts the application folder back as the backup holds it, then gives up.
rollback() {
    log "failed: $*"
    if [ "$BACKUP_DONE" = 1 ]; then
        log "restoring the backup"
        if [ "$MODE" = single ]; then
            replace_file "$BACKUP_DIR/${EXECUTABLE##*/}" "$EXECUTABLE" || log "restore failed"
        else
            clear_application_folder || log "restore could not clear the folder"
            copy_content "$BACKUP_DIR" "$APP_DIR" || log "restore failed"
        fi
    fi
    exit 1
}
)SH";

const char *const kPackageSteps = R"SH(
log "waiting for process $PROCESS_ID to exit"
wait_for_exit || fail "The program did not exit."
sleep 0.5
rm -rf -- "$BACKUP_DIR"
mkdir -p -- "$BACKUP_DIR" || fail "Could not create the backup folder."

if [ "$MODE" = single ]; then
    cp -p -- "$EXECUTABLE" "$BACKUP_DIR/" || fail "Could not back up the executable."
    BACKUP_DONE=1
    log "replacing $EXECUTABLE"
    replace_file "$SOURCE_FILE" "$EXECUTABLE" || rollback "Could not replace target executable."
else
    log "backing up $APP_DIR"
    copy_content "$APP_DIR" "$BACKUP_DIR" || fail "Could not back up the application folder."
    BACKUP_DONE=1
    if [ "$MODE" = full ]; then
        log "removing the previous version"
        clear_application_folder || rollback "Could not remove the previous version."
    fi
    log "copying the package from $PACKAGE_ROOT"
    copy_content "$PACKAGE_ROOT" "$APP_DIR" || rollback "Could not copy the package."
    [ -f "$EXECUTABLE" ] || rollback "The executable is missing after the update."
    chmod +x -- "$EXECUTABLE" || rollback "The executable could not be marked executable."
fi
printf '%s\n' "$BUILD_NUMBER" > "$APP_DIR/VantreoGuideUpdateBuild.txt" || rollback "Could not write the build marker."
start_program
rm -rf -- "$EXTRACT_DIR"
rm -f -- "$SCRIPT_PATH"
log "done"
exit 0
)SH";

QString assignment(const char *name, const QString &value)
{
    return QStringLiteral("%1=%2\n").arg(QLatin1String(name), shellQuote(QDir::cleanPath(value)));
}

QString header(const ScriptValues &values)
{
    QString text = QStringLiteral("#!/bin/sh\n# Written by VantreoGuide to finish an update after the program has exited.\nset -u\n\n");
    text += QStringLiteral("PROCESS_ID=%1\n").arg(values.processId);
    text += assignment("EXECUTABLE", values.executable);
    text += assignment("APP_DIR", values.applicationFolder);
    text += assignment("SOURCE_FILE", values.sourceFile.isEmpty() ? QStringLiteral("/nonexistent") : values.sourceFile);
    text += QStringLiteral("BUILD_NUMBER=%1\n").arg(shellQuote(values.buildNumber));
    text += assignment("SCRIPT_PATH", values.scriptPath);
    text += assignment("LOG_FILE", values.logPath);
    return text;
}

QString modeWord(PackageMode mode)
{
    switch (mode) {
    case PackageMode::SingleExecutable:
        return QStringLiteral("single");
    case PackageMode::Full:
        return QStringLiteral("full");
    case PackageMode::Patch:
        return QStringLiteral("patch");
    }
    return QStringLiteral("patch");
}

} // namespace

#ifdef Q_OS_WIN
QString scriptExtension()
{
    return QStringLiteral(".ps1");
}

std::pair<QString, QStringList> scriptLauncher(const QString &scriptPath)
{
    return {QStringLiteral("powershell.exe"),
            {QStringLiteral("-NoProfile"), QStringLiteral("-ExecutionPolicy"), QStringLiteral("Bypass"),
             QStringLiteral("-WindowStyle"), QStringLiteral("Hidden"), QStringLiteral("-File"),
             QDir::toNativeSeparators(scriptPath)}};
}

QString executableUpdateScript(const ScriptValues &values)
{
    return powerShellExecutableScript(values);
}

QString packageUpdateScript(const ScriptValues &values, PackageMode mode)
{
    return powerShellPackageScript(values, modeWord(mode));
}
#else
QString scriptExtension()
{
    return QStringLiteral(".sh");
}

std::pair<QString, QStringList> scriptLauncher(const QString &scriptPath)
{
    return {QStringLiteral("/bin/sh"), {scriptPath}};
}

QString executableUpdateScript(const ScriptValues &values)
{
    return header(values) + QString::fromUtf8(kCommonFunctions) + QString::fromUtf8(kExecutableSteps);
}

QString packageUpdateScript(const ScriptValues &values, PackageMode mode)
{
    return posixPackageScript(values, mode);
}
#endif

QString posixPackageScript(const ScriptValues &values, PackageMode mode)
{
    QString text = header(values);
    text += QStringLiteral("MODE=%1\n").arg(modeWord(mode));
    text += assignment("PACKAGE_ROOT", values.packageRoot);
    text += assignment("EXTRACT_DIR", values.extractionFolder);
    text += assignment("BACKUP_DIR", values.backupFolder);
    text += QString::fromUtf8(kCommonFunctions) + QString::fromUtf8(kPackageFunctions) + QString::fromUtf8(kPackageSteps);
    return text;
}

} // namespace vg::net
