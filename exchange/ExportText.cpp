#include "exchange/ExportText.h"

#include <QDir>
#include <QFileInfo>

#include <charconv>
#include <cmath>

namespace vg::exchange {

namespace {

constexpr size_t kFlushBytes = size_t(1) << 20;

} // namespace

ExportTextFile::~ExportTextFile()
{
    if (m_file)
        m_file->cancelWriting();
}

bool ExportTextFile::open(const QString &path)
{
    m_file = std::make_unique<QSaveFile>(path);
    m_failed = false;
    m_buffer.clear();
    m_buffer.reserve(kFlushBytes + 4096);
    if (!m_file->open(QIODevice::WriteOnly)) {
        m_failed = true;
        return false;
    }
    return true;
}

void ExportTextFile::write(std::string_view text)
{
    m_buffer.append(text);
    flushIfLarge();
}

void ExportTextFile::write(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    m_buffer.append(utf8.constData(), size_t(utf8.size()));
    flushIfLarge();
}

void ExportTextFile::fixed(double value, int decimals)
{
    appendFixed(m_buffer, value, decimals);
    flushIfLarge();
}

void ExportTextFile::number(double value)
{
    appendNumber(m_buffer, value);
    flushIfLarge();
}

void ExportTextFile::single(double value)
{
    appendSingle(m_buffer, value);
    flushIfLarge();
}

void ExportTextFile::integer(long long value)
{
    char buf[24];
    const auto result = std::to_chars(buf, buf + sizeof buf, value);
    m_buffer.append(buf, result.ptr);
    flushIfLarge();
}

void ExportTextFile::flushIfLarge()
{
    if (m_buffer.size() >= kFlushBytes)
        flush();
}

bool ExportTextFile::flush()
{
    if (!m_file || m_failed) {
        m_buffer.clear();
        return false;
    }
    if (!m_buffer.empty()) {
        const qint64 written = m_file->write(m_buffer.data(), qint64(m_buffer.size()));
        if (written != qint64(m_buffer.size()))
            m_failed = true;
    }
    m_buffer.clear();
    return !m_failed;
}

bool ExportTextFile::commit()
{
    if (!m_file)
        return false;
    if (!flush()) {
        m_file->cancelWriting();
        m_file->commit();
        return false;
    }
    const bool ok = m_file->commit();
    if (!ok)
        m_failed = true;
    return ok;
}

QString ExportTextFile::errorString() const
{
    return m_file ? m_file->errorString() : QString();
}

void appendFixed(std::string &out, double value, int decimals)
{
    if (!std::isfinite(value))
        value = 0.0;
    // Values that round to zero are written as zero, never as "-0.000000".
    const double half = 0.5 * std::pow(10.0, -decimals);
    if (std::abs(value) < half)
        value = 0.0;
    char buf[64];
    const auto result = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed, decimals);
    if (result.ec == std::errc())
        out.append(buf, result.ptr);
    else
        out.append("0");
}

void appendNumber(std::string &out, double value)
{
    if (!std::isfinite(value))
        value = 0.0;
    if (value == 0.0)
        value = 0.0; // drops the sign of -0
    char buf[64];
    auto result = std::to_chars(buf, buf + sizeof buf, value);
    if (result.ec != std::errc() || result.ptr - buf > 17)
        result = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general, 10);
    out.append(buf, result.ptr);
}

void appendSingle(std::string &out, double value)
{
    float f = std::isfinite(value) ? float(value) : 0.0f;
    if (f == 0.0f)
        f = 0.0f;
    char buf[32];
    const auto result = std::to_chars(buf, buf + sizeof buf, f);
    out.append(buf, result.ptr);
}

std::string fixedText(double value, int decimals)
{
    std::string s;
    appendFixed(s, value, decimals);
    return s;
}

std::string numberText(double value)
{
    std::string s;
    appendNumber(s, value);
    return s;
}

QString asciiIdentifier(const QString &name)
{
    QString out;
    out.reserve(name.size());
    bool pendingUnderscore = false;
    bool any = false;
    for (const QChar c : name) {
        const ushort u = c.unicode();
        const bool ascii = (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9');
        if (ascii) {
            if (pendingUnderscore && !out.isEmpty())
                out.append(QLatin1Char('_'));
            pendingUnderscore = false;
            out.append(c);
            any = true;
        } else {
            pendingUnderscore = true;
        }
    }
    return any ? out : QString();
}

QString singleLineText(const QString &name)
{
    QString out = name;
    for (QChar &c : out) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = QLatin1Char(' ');
    }
    return out.trimmed();
}

QString leadingLetterIdentifier(const QString &identifier, const QString &prefix)
{
    if (identifier.isEmpty() || identifier.front().isDigit())
        return prefix + QLatin1Char('_') + identifier;
    return identifier;
}

bool ensureFolder(const QString &folder)
{
    if (folder.isEmpty())
        return true;
    const QFileInfo info(folder);
    if (info.isDir())
        return true;
    if (info.exists())
        return false;
    return QDir().mkpath(folder);
}

QString pathMessage(const QString &message, const QString &path)
{
    return message + QLatin1Char(' ') + QDir::toNativeSeparators(path);
}

} // namespace vg::exchange
