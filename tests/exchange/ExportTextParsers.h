#pragma once

// Small independent readers of the written text formats, for the tests: they know the
// formats' syntax, not the writer's code.

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QStringList>

#include <Eigen/Geometry>

#include <cmath>
#include <map>
#include <vector>

namespace exporttest {

// Brackets, braces and parentheses match outside quoted strings, asset paths (@...@) and
// prim paths (<...>). Returns an empty string or the first problem.
inline QString bracketProblem(const QString &text)
{
    QString stack;
    bool inString = false, inAsset = false, inPath = false;
    int line = 1;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('\n'))
            ++line;
        if (inString) {
            if (c == QLatin1Char('\\'))
                ++i;
            else if (c == QLatin1Char('"'))
                inString = false;
            continue;
        }
        if (inAsset) {
            inAsset = c != QLatin1Char('@');
            continue;
        }
        if (inPath) {
            inPath = c != QLatin1Char('>');
            continue;
        }
        if (c == QLatin1Char('#') || (c == QLatin1Char('/') && i + 1 < text.size() && text.at(i + 1) == QLatin1Char('/'))) {
            while (i < text.size() && text.at(i) != QLatin1Char('\n'))
                ++i;
            ++line;
            continue;
        }
        switch (c.unicode()) {
        case '"': inString = true; break;
        case '@': inAsset = true; break;
        case '<': inPath = true; break;
        case '(': case '[': case '{': stack.append(c); break;
        case ')': case ']': case '}': {
            const QChar open = c == QLatin1Char(')') ? QLatin1Char('(') : c == QLatin1Char(']') ? QLatin1Char('[') : QLatin1Char('{');
            if (stack.isEmpty() || stack.back() != open)
                return QStringLiteral("unmatched %1 on line %2").arg(c).arg(line);
            stack.chop(1);
            break;
        }
        default: break;
        }
    }
    if (inString || inAsset || inPath)
        return QStringLiteral("unterminated string or path");
    return stack.isEmpty() ? QString() : QStringLiteral("unclosed %1").arg(stack);
}

// One prim of a USDA layer: its path, type and the text of its own body lines.
struct UsdPrim {
    QString path, type;
    QStringList lines;
};

// Reads the prim tree: "def Type "Name"" opens a prim whose body follows in braces.
inline std::vector<UsdPrim> usdPrims(const QString &text, QString *problem)
{
    static const QRegularExpression def(QStringLiteral("^\\s*def\\s+(\\w+)\\s+\"([^\"]*)\"\\s*$"));
    std::vector<UsdPrim> prims;
    QStringList pathStack;
    std::vector<int> primStack;   // index into prims of each open brace, -1 for non-prim braces
    QString pendingName, pendingType;
    bool pending = false;
    int parenDepth = 0;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        const QString t = line.trimmed();
        const QRegularExpressionMatch m = def.match(line);
        if (m.hasMatch()) {
            pending = true;
            pendingType = m.captured(1);
            pendingName = m.captured(2);
            continue;
        }
        parenDepth += int(t.count(QLatin1Char('('))) - int(t.count(QLatin1Char(')')));
        if (t == QLatin1String("{")) {
            if (pending) {
                pathStack.append(pendingName);
                prims.push_back({QLatin1Char('/') + pathStack.join(QLatin1Char('/')), pendingType, {}});
                primStack.push_back(int(prims.size()) - 1);
            } else {
                primStack.push_back(-1);
            }
            pending = false;
            continue;
        }
        if (t == QLatin1String("}")) {
            if (primStack.empty()) {
                *problem = QStringLiteral("closing brace without prim");
                return prims;
            }
            if (primStack.back() >= 0)
                pathStack.removeLast();
            primStack.pop_back();
            continue;
        }
        if (!primStack.empty() && primStack.back() >= 0)
            prims[size_t(primStack.back())].lines.append(line);
    }
    if (!primStack.empty())
        *problem = QStringLiteral("unclosed prim");
    return prims;
}

// The numbers of a "[...]" or "(...)" list that starts after `key` in `text` (tuples are
// flattened); the count of top-level elements goes to `elements`.
inline std::vector<double> usdArray(const QString &text, const QString &key, int *elements = nullptr)
{
    const int at = text.indexOf(key);
    std::vector<double> values;
    if (at < 0)
        return values;
    const int open = text.indexOf(QLatin1Char('['), at + key.size());
    if (open < 0)
        return values;
    int depth = 0, count = 0, close = open;
    bool any = false;
    for (int i = open; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('[') || c == QLatin1Char('('))
            ++depth;
        else if (c == QLatin1Char(']') || c == QLatin1Char(')'))
            --depth;
        else if (depth == 1 && c == QLatin1Char(','))
            ++count;
        else if (!c.isSpace())
            any = true;
        if (depth == 0) {
            close = i;
            break;
        }
    }
    if (elements)
        *elements = any ? count + 1 : 0;
    static const QRegularExpression number(QStringLiteral("[-+]?[0-9]*\\.?[0-9]+(?:[eE][-+]?[0-9]+)?"));
    auto it = number.globalMatch(text.mid(open, close - open));
    while (it.hasNext())
        values.push_back(it.next().captured(0).toDouble());
    return values;
}

// The first number after `key` on its line.
inline double numberAfter(const QString &text, const QString &key, bool *found = nullptr)
{
    const int at = text.indexOf(key);
    if (found)
        *found = at >= 0;
    if (at < 0)
        return std::nan("");
    static const QRegularExpression number(QStringLiteral("[-+]?[0-9]*\\.?[0-9]+(?:[eE][-+]?[0-9]+)?"));
    return number.match(text, at + key.size()).captured(0).toDouble();
}

// All numbers after `key` on its line.
inline std::vector<double> numbersAfter(const QString &text, const QString &key)
{
    std::vector<double> out;
    const int at = text.indexOf(key);
    if (at < 0)
        return out;
    const int end = text.indexOf(QLatin1Char('\n'), at);
    static const QRegularExpression number(QStringLiteral("[-+]?[0-9]*\\.?[0-9]+(?:[eE][-+]?[0-9]+)?"));
    auto it = number.globalMatch(text.mid(at + key.size(), end < 0 ? -1 : end - at - key.size()));
    while (it.hasNext())
        out.push_back(it.next().captured(0).toDouble());
    return out;
}

// The 16 numbers of the first "matrix4d xformOp:transform" in `text`.
inline std::vector<double> usdMatrix(const QString &text)
{
    const int at = text.indexOf(QStringLiteral("xformOp:transform ="));
    const int end = text.indexOf(QStringLiteral("xformOpOrder"), at);
    std::vector<double> out;
    if (at < 0 || end < 0)
        return out;
    static const QRegularExpression number(QStringLiteral("[-+]?[0-9]*\\.?[0-9]+(?:[eE][-+]?[0-9]+)?"));
    const QString body = text.mid(at, end - at);
    auto it = number.globalMatch(body, body.indexOf(QLatin1Char('=')));
    while (it.hasNext())
        out.push_back(it.next().captured(0).toDouble());
    return out;
}

// `text` from the first `marker` on; empty when it is missing.
inline QString textFrom(const QString &text, const QString &marker)
{
    const int at = text.indexOf(marker);
    return at < 0 ? QString() : text.mid(at);
}

// The comma-separated numbers of the FBX "a: ..." line that follows `key`.
inline std::vector<double> fbxArray(const QString &text, const QString &key)
{
    const QString from = textFrom(text, key);
    const int a = from.indexOf(QStringLiteral("a: "));
    std::vector<double> out;
    if (a < 0)
        return out;
    const int end = from.indexOf(QLatin1Char('\n'), a);
    for (const QString &part : from.mid(a + 3, end - a - 3).split(QLatin1Char(',')))
        out.push_back(part.trimmed().toDouble());
    return out;
}

// R = Rz · Ry · Rx from degrees: the X-then-Y-then-Z order of FBX, Maya and the scene.
inline Eigen::Matrix3d eulerXyz(double x, double y, double z)
{
    const double k = M_PI / 180.0;
    return (Eigen::AngleAxisd(z * k, Eigen::Vector3d::UnitZ()) * Eigen::AngleAxisd(y * k, Eigen::Vector3d::UnitY())
            * Eigen::AngleAxisd(x * k, Eigen::Vector3d::UnitX()))
        .toRotationMatrix();
}

// Film-corner directions in a camera frame that looks along -Z with +Y up: top-left,
// top-right, bottom-right, bottom-left of the film gate, from apertures, offsets and focal
// length in one unit.
inline std::array<Eigen::Vector3d, 4> filmCorners(double focal, double apW, double apH, double offX, double offY)
{
    const double l = (offX - apW / 2) / focal, r = (offX + apW / 2) / focal;
    const double t = (offY + apH / 2) / focal, b = (offY - apH / 2) / focal;
    return {Eigen::Vector3d(l, t, -1), Eigen::Vector3d(r, t, -1), Eigen::Vector3d(r, b, -1), Eigen::Vector3d(l, b, -1)};
}

} // namespace exporttest
