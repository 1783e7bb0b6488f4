#pragma once

#include <QSaveFile>
#include <QString>

#include <memory>
#include <string>
#include <string_view>

// Text output shared by the exporters: a buffered UTF-8 writer over QSaveFile (a failed
// export never replaces an older file), number formatting without locale, and the name
// rules that keep hostile object names out of the file syntax.
namespace vg::exchange {

class ExportTextFile
{
public:
    ExportTextFile() = default;
    ~ExportTextFile();
    ExportTextFile(const ExportTextFile &) = delete;
    ExportTextFile &operator=(const ExportTextFile &) = delete;

    bool open(const QString &path);
    // Appends to the buffer; the buffer goes to the file in large pieces.
    void write(std::string_view text);
    void write(const QString &text);
    void line(std::string_view text)
    {
        write(text);
        m_buffer.push_back('\n');
    }
    void line(const QString &text)
    {
        write(text);
        m_buffer.push_back('\n');
    }
    // Appends a number: fixed with `decimals` digits, or shortest round-trip form.
    void fixed(double value, int decimals = 6);
    void number(double value);
    // Single precision, shortest round-trip form: mesh data, where 7 digits are plenty.
    void single(double value);
    void integer(long long value);
    void put(char c) { m_buffer.push_back(c); }

    // Writes the rest and replaces the target; false when any write failed.
    bool commit();
    QString errorString() const;

private:
    void flushIfLarge();
    bool flush();

    std::unique_ptr<QSaveFile> m_file;
    std::string m_buffer;
    bool m_failed = false;
};

// "0.500000": fixed point, no locale, never "-0.000000".
void appendFixed(std::string &out, double value, int decimals = 6);
// The shortest text that reads back as the same double (10 significant digits at most
// for values that need more), no locale, non-finite values as 0.
void appendNumber(std::string &out, double value);
void appendSingle(std::string &out, double value);
std::string fixedText(double value, int decimals = 6);
std::string numberText(double value);

// Letters, digits and underscores of ASCII only, every other run of characters turned into
// one underscore, no underscore at either end. Empty when no ASCII letter or digit remains,
// so that the caller falls back to its indexed name.
QString asciiIdentifier(const QString &name);
// The name with control characters (line breaks, tabs) replaced by spaces and trimmed,
// for formats that carry free text to the end of a line.
QString singleLineText(const QString &name);
// An identifier that does not start with a digit (USD prims, Maya nodes).
QString leadingLetterIdentifier(const QString &identifier, const QString &prefix);

// Makes the folder when it is missing; false when it cannot be made.
bool ensureFolder(const QString &folder);

// "Could not save OBJ file: <path>": a message of the Parts followed by the native path.
QString pathMessage(const QString &message, const QString &path);

} // namespace vg::exchange
