#include "net/UpdateScripts.h"

#include <QDir>

// The Windows form of the update scripts: the same steps, logs, retries and kept names as
// the POSIX scripts, in Windows PowerShell.
namespace vg::net {
namespace {

const char *const kCommon = R"PS(
$ErrorActionPreference = 'Stop'

function Write-Log([string]$Message) {
    Add-Content -LiteralPath $LogFile -Value ((Get-Date -Format s) + ' ' + $Message) -Encoding UTF8
}

function Wait-ForExit {
    $process = Get-Process -Id $ProcessId -ErrorAction SilentlyContinue
    if ($process -and -not $process.WaitForExit(120000)) { throw 'The program did not exit.' }
}

# Up to 40 tries, 250 ms apart: the old executable may stay locked for a moment.
function Copy-WithRetry([string]$From, [string]$To) {
    for ($i = 1; $i -le 40; $i++) {
        try {
            Copy-Item -LiteralPath $From -Destination $To -Force
            return $true
        } catch {
            Write-Log ('copy retry ' + $i + ': ' + $_.Exception.Message)
            Start-Sleep -Milliseconds 250
        }
    }
    return $false
}

function Remove-WithRetry([string]$Item) {
    for ($i = 1; $i -le 40; $i++) {
        try {
            Remove-Item -LiteralPath $Item -Recurse -Force
            return $true
        } catch {
            Write-Log ('delete retry ' + $i + ': ' + $_.Exception.Message)
            Start-Sleep -Milliseconds 250
        }
    }
    return $false
}

function Test-Kept([string]$Name) {
    return ($Name -eq 'VantreoGuideSettings.json') -or ($Name -eq 'backup') -or ($Name -eq 'source') -or ($Name -like '*.vgs')
}

function Clear-ApplicationFolder {
    foreach ($item in Get-ChildItem -LiteralPath $AppDir -Force) {
        if (Test-Kept $item.Name) { continue }
        if (-not (Remove-WithRetry $item.FullName)) { throw 'Could not remove the previous version.' }
    }
}

function Copy-Content([string]$From, [string]$To) {
    Get-ChildItem -LiteralPath $From -Force | ForEach-Object {
        Copy-Item -LiteralPath $_.FullName -Destination $To -Recurse -Force
    }
}

function Start-Program {
    Write-Log ('starting ' + $Executable)
    Start-Process -FilePath $Executable -WorkingDirectory $AppDir
    Start-Sleep -Milliseconds 300
}
)PS";

const char *const kExecutableSteps = R"PS(
try {
    Write-Log ('waiting for process ' + $ProcessId + ' to exit')
    Wait-ForExit
    Start-Sleep -Milliseconds 500
    Write-Log ('replacing ' + $Executable)
    if (-not (Copy-WithRetry $SourceFile $Executable)) { throw 'Could not replace target executable.' }
    Start-Program
    Remove-Item -LiteralPath $ScriptPath -Force -ErrorAction SilentlyContinue
    Write-Log 'done'
    exit 0
} catch {
    Write-Log ('failed: ' + $_.Exception.Message)
    exit 1
}
)PS";

const char *const kPackageSteps = R"PS(
$BackupDone = $false
try {
    Write-Log ('waiting for process ' + $ProcessId + ' to exit')
    Wait-ForExit
    Start-Sleep -Milliseconds 500
    if (Test-Path -LiteralPath $BackupDir) { Remove-Item -LiteralPath $BackupDir -Recurse -Force }
    New-Item -ItemType Directory -Path $BackupDir -Force | Out-Null
    if ($Mode -eq 'single') {
        Copy-Item -LiteralPath $Executable -Destination $BackupDir -Force
        $BackupDone = $true
        if (-not (Copy-WithRetry $SourceFile $Executable)) { throw 'Could not replace target executable.' }
    } else {
        Write-Log ('backing up ' + $AppDir)
        Copy-Content $AppDir $BackupDir
        $BackupDone = $true
        if ($Mode -eq 'full') {
            Write-Log 'removing the previous version'
            Clear-ApplicationFolder
        }
        Write-Log ('copying the package from ' + $PackageRoot)
        Copy-Content $PackageRoot $AppDir
        if (-not (Test-Path -LiteralPath $Executable -PathType Leaf)) { throw 'The executable is missing after the update.' }
    }
    Set-Content -LiteralPath (Join-Path $AppDir 'VantreoGuideUpdateBuild.txt') -Value $BuildNumber -Encoding ASCII
    Start-Program
    Remove-Item -LiteralPath $ExtractDir -Recurse -Force -ErrorAction SilentlyContinue
    Remove-Item -LiteralPath $ScriptPath -Force -ErrorAction SilentlyContinue
    Write-Log 'done'
    exit 0
} catch {
    Write-Log ('failed: ' + $_.Exception.Message)
    if ($BackupDone) {
        Write-Log 'restoring the backup'
        try {
            if ($Mode -eq 'single') {
                Copy-WithRetry (Join-Path $BackupDir (Split-Path -Leaf $Executable)) $Executable | Out-Null
            } else {
                Clear-ApplicationFolder
                Copy-Content $BackupDir $AppDir
            }
        } catch {
            Write-Log ('restore failed: ' + $_.Exception.Message)
        }
    }
    exit 1
}
)PS";

QString assignment(const char *name, const QString &value)
{
    return QStringLiteral("$%1 = %2\n").arg(QLatin1String(name), powerShellQuote(value));
}

QString header(const ScriptValues &values)
{
    QString text = QStringLiteral("# Written by VantreoGuide to finish an update after the program has exited.\n");
    text += QStringLiteral("$ProcessId = %1\n").arg(values.processId);
    text += assignment("Executable", QDir::toNativeSeparators(values.executable));
    text += assignment("AppDir", QDir::toNativeSeparators(values.applicationFolder));
    text += assignment("SourceFile", QDir::toNativeSeparators(values.sourceFile));
    text += assignment("BuildNumber", values.buildNumber);
    text += assignment("ScriptPath", QDir::toNativeSeparators(values.scriptPath));
    text += assignment("LogFile", QDir::toNativeSeparators(values.logPath));
    return text;
}

} // namespace

QString powerShellQuote(const QString &value)
{
    QString quoted = value;
    quoted.replace(QLatin1Char('\''), QStringLiteral("''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

QString powerShellExecutableScript(const ScriptValues &values)
{
    return header(values) + QString::fromUtf8(kCommon) + QString::fromUtf8(kExecutableSteps);
}

QString powerShellPackageScript(const ScriptValues &values, const QString &modeWord)
{
    QString text = header(values);
    text += assignment("Mode", modeWord);
    text += assignment("PackageRoot", QDir::toNativeSeparators(values.packageRoot));
    text += assignment("ExtractDir", QDir::toNativeSeparators(values.extractionFolder));
    text += assignment("BackupDir", QDir::toNativeSeparators(values.backupFolder));
    return text + QString::fromUtf8(kCommon) + QString::fromUtf8(kPackageSteps);
}

} // namespace vg::net
