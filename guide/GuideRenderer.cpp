#include "guide/GuideRenderer.h"

#include "guide/ProjectorLayout.h"

#include <QFontDatabase>
#include <QHash>
#include <QThread>
#include <QtConcurrent/QtConcurrentMap>
#include <QtConcurrent/QtConcurrentRun>
#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>
#include <QPainterPath>
#include <QStringList>

#include <algorithm>
#include <exception>
#include <functional>
#include <cmath>
#include <mutex>

namespace {

constexpr int kMaxSide = 32768;
constexpr double kMaxGlyphImagePixels = 160.0;

// The 56 row syllables: 14 initial consonants with the vowels ㅏ, ㅓ, ㅗ, ㅜ, composed from
// the Unicode Hangul syllable block. Built once; the only state renders share.
const QStringList &koreanSyllables()
{
    static const QStringList list = [] {
        static constexpr int initials[14] = {0, 2, 3, 5, 6, 7, 9, 11, 12, 14, 15, 16, 17, 18};
        static constexpr int vowels[4] = {0, 4, 8, 13};
        QStringList l;
        l.reserve(56);
        for (int vowel : vowels) {
            for (int initial : initials)
                l.append(QString(QChar(char16_t(0xAC00 + (initial * 21 + vowel) * 28))));
        }
        return l;
    }();
    return list;
}

QString guideFontFamily()
{
    static std::once_flag once;
    static QString family;
    std::call_once(once, [] {
        const int id = QFontDatabase::addApplicationFont(QStringLiteral(":/assets/NanumGothicExtraBold.ttf"));
        const QStringList families = id >= 0 ? QFontDatabase::applicationFontFamilies(id) : QStringList();
        family = families.isEmpty() ? QString() : families.first();
    });
    return family;
}

// The built-in ExtraBold face. Its weight is asked for exactly: plain bold would pick
// another cut of the family where the system has one, and guides would differ between
// machines.
QFont guideFont(double pixelSize)
{
    QFont font;
    const QString family = guideFontFamily();
    if (!family.isEmpty())
        font.setFamily(family);
    font.setPixelSize(std::max(1, int(std::lround(pixelSize))));
    font.setWeight(QFont::ExtraBold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QColor lightLineColor(int pattern)
{
    return QColor(220, 220, 220, pattern == GuidePatternDefault ? 133 : 255);
}

// White text on a soft shadow so it reads on any cell colour.
void drawShadowedText(QPainter &p, const QRectF &rect, int flags, const QString &text, double shadow,
                      const QColor &color = Qt::white)
{
    p.setPen(QColor(0, 0, 0, 170));
    p.drawText(rect.translated(shadow, shadow), flags, text);
    p.setPen(color);
    p.drawText(rect, flags, text);
}

// A text with a dark rounded backing, centred on a point.
void drawLabelBox(QPainter &p, const QPointF &center, const QString &text, const QFont &font, const QColor &textColor,
                  const QColor &boxColor)
{
    const QFontMetricsF fm(font);
    const QStringList lines = text.split(QLatin1Char('\n'));
    double width = 0.0;
    for (const QString &line : lines)
        width = std::max(width, fm.horizontalAdvance(line));
    const double pad = fm.height() * 0.35;
    const QSizeF size(width + 2 * pad, fm.height() * lines.size() + pad);
    const QRectF box(center.x() - size.width() / 2, center.y() - size.height() / 2, size.width(), size.height());
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(Qt::NoPen);
    p.setBrush(boxColor);
    p.drawRoundedRect(box, pad, pad);
    p.setFont(font);
    p.setPen(textColor);
    p.drawText(box, Qt::AlignCenter, text);
    p.restore();
}

void drawArrowHead(QPainter &p, const QPointF &tip, const QPointF &direction, double size)
{
    const QPointF d = direction / std::max(1e-9, std::hypot(direction.x(), direction.y()));
    const QPointF n(-d.y(), d.x());
    const QPointF base = tip - d * size;
    QPolygonF head;
    head << tip << base + n * (size * 0.45) << base - n * (size * 0.45);
    p.drawPolygon(head);
}

struct Frame {
    int width = 1;
    int height = 1;
    double unit = 1.0; // one pixel of a 1080-line guide, times the guide scale
    double fontScale = 1.0;
};

// ---------------------------------------------------------------- cells

// Cell labels are blitted from glyph images rendered once per guide: the painter draws
// glyphs above 64 px as paths, which on an 8K guide costs more than everything else.
struct LabelAtlas {
    struct Glyph {
        QImage image;
        QPoint offset; // image top-left relative to the pen position on the baseline
        double advance = 0.0;
    };
    QHash<char16_t, Glyph> glyphs;
    double ascent = 0.0;
    double height = 0.0;
    bool valid = false;
    // Above kMaxGlyphImagePixels the glyphs are drawn as outlines with this font instead:
    // one image of a cell-sized glyph would take gigabytes on a large guide.
    bool asPaths = false;
    QFont font;

    double width(const QString &text) const
    {
        double w = 0.0;
        for (QChar ch : text)
            w += glyphs.value(ch.unicode()).advance;
        return w;
    }
};

// Which cell paints each pixel along one axis: the cells are filled in order and later
// fills cover earlier ones, exactly as the painter's rectangle fills do. Found per pixel
// by bisection, so a count near the integer limit costs no more than a small one.
QVector<int> cellOwners(int pixels, int count, double size, bool inverse)
{
    const double fill = std::ceil(size);
    // Cell i covers [start(i), start(i) + fill); the first cell painted reaches the near
    // edge and the last one the far edge.
    auto start = [&](qint64 i) { return std::floor(inverse ? pixels - (i + 1) * size : i * size); };
    QVector<int> owner(pixels, 0);
    for (int x = 0; x < pixels; ++x) {
        // The predicate is true for a prefix of the cells; the owner is the last of them.
        auto covers = [&](qint64 i) { return inverse ? start(i) + fill > x || i == 0 : start(i) <= x; };
        qint64 lo = 0, hi = qint64(count) - 1;
        while (lo < hi) {
            const qint64 mid = lo + (hi - lo + 1) / 2;
            if (covers(mid))
                lo = mid;
            else
                hi = mid - 1;
        }
        owner[x] = int(lo);
    }
    return owner;
}

// The cells that own at least one pixel along one axis, in painting order. Every other
// cell is wholly covered by later ones, so leaving it out changes no pixel and bounds the
// work by the image size rather than the cell count.
struct AxisCells {
    QVector<int> ownerOf; // per pixel
    QVector<int> visible; // ascending
    QVector<int> slotOf;  // per pixel: position of its owner in `visible`
};

AxisCells axisCells(int pixels, int count, double size, bool inverse)
{
    AxisCells a;
    a.ownerOf = cellOwners(pixels, count, size, inverse);
    QVector<int> sorted = a.ownerOf;
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    a.visible = sorted;
    a.slotOf.resize(pixels);
    for (int x = 0; x < pixels; ++x)
        a.slotOf[x] = int(std::lower_bound(sorted.begin(), sorted.end(), a.ownerOf.at(x)) - sorted.begin());
    return a;
}

struct CellGrid {
    int columns = 1;
    int rows = 1;
    double cellWidth = 1.0;
    double cellHeight = 1.0;
    int format = 0;
    AxisCells columnCells;
    AxisCells rowCells;
    LabelAtlas labels;
};

CellGrid prepareCells(const GuideSettings &s, const Frame &f)
{
    CellGrid g;
    g.columns = guideGridColumns(s);
    g.rows = guideGridRows(s);
    g.cellWidth = double(f.width) / g.columns;
    g.cellHeight = double(f.height) / g.rows;
    g.format = clampGuideNumberFormat(s.numberTextFormat);
    g.columnCells = axisCells(f.width, g.columns, g.cellWidth, s.inverseX);
    g.rowCells = axisCells(f.height, g.rows, g.cellHeight, s.inverseY);
    if (!s.displayNumber)
        return g;

    // One size for every label: the longest labels sit in the last row and column.
    double size = std::min(g.cellWidth, g.cellHeight) * 0.3 * f.fontScale;
    QFont font = guideFont(size);
    {
        const QFontMetricsF fm(font);
        double widest = 0.0;
        for (qint64 c = 0; c < g.columns; c += std::max(1, g.columns / 64))
            widest = std::max(widest, fm.horizontalAdvance(guideCellLabel(g.format, g.rows - 1, int(c))));
        for (qint64 r = 0; r < g.rows; r += std::max(1, g.rows / 64))
            widest = std::max(widest, fm.horizontalAdvance(guideCellLabel(g.format, int(r), g.columns - 1)));
        widest = std::max(widest, fm.horizontalAdvance(guideCellLabel(g.format, g.rows - 1, g.columns - 1)));
        if (widest > g.cellWidth * 0.86)
            size *= g.cellWidth * 0.86 / widest;
    }
    if (size < 1.0)
        return g;
    font = guideFont(size);
    const QFontMetricsF fm(font);
    g.labels.ascent = fm.ascent();
    g.labels.height = fm.height();

    QString characters = QStringLiteral("0123456789-ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    for (const QString &syllable : koreanSyllables())
        characters += syllable;
    const QColor color(255, 255, 255, 225);
    g.labels.asPaths = size > kMaxGlyphImagePixels;
    g.labels.font = font;
    for (QChar ch : characters) {
        LabelAtlas::Glyph glyph;
        glyph.advance = fm.horizontalAdvance(ch);
        if (g.labels.asPaths) {
            g.labels.glyphs.insert(ch.unicode(), glyph);
            continue;
        }
        const QRect box = fm.boundingRect(ch).toAlignedRect().adjusted(-2, -2, 2, 2);
        glyph.offset = box.topLeft();
        glyph.image = QImage(std::max(1, box.width()), std::max(1, box.height()), QImage::Format_ARGB32_Premultiplied);
        if (glyph.image.isNull())
            return g; // no labels rather than no guide
        glyph.image.fill(Qt::transparent);
        QPainter gp(&glyph.image);
        gp.setRenderHint(QPainter::TextAntialiasing, true);
        gp.setFont(font);
        gp.setPen(color);
        gp.drawText(QPointF(-box.left(), -box.top()), QString(ch));
        gp.end();
        g.labels.glyphs.insert(ch.unicode(), glyph);
    }
    g.labels.valid = true;
    return g;
}

void drawLabel(QPainter &p, const LabelAtlas &atlas, const QRectF &cell, const QString &text)
{
    double x = cell.center().x() - atlas.width(text) / 2.0;
    const double baseline = cell.center().y() - atlas.height / 2.0 + atlas.ascent;
    if (atlas.asPaths) {
        p.save();
        p.setRenderHint(QPainter::Antialiasing, true);
        p.setFont(atlas.font);
        p.setPen(QColor(255, 255, 255, 225));
        p.drawText(QPointF(x, baseline), text);
        p.restore();
        return;
    }
    for (QChar ch : text) {
        const auto it = atlas.glyphs.constFind(ch.unicode());
        if (it == atlas.glyphs.constEnd())
            continue;
        p.drawImage(QPoint(int(std::lround(x)) + it->offset.x(), int(std::lround(baseline)) + it->offset.y()),
                    it->image);
        x += it->advance;
    }
}

// Tiny cells (a few pixels, e.g. real square cells of 1 px) would mean millions of
// painter calls; the same pixels are written directly instead.
void fillSmallCells(QImage &device, const GuideSettings &s, const Frame &f, const CellGrid &g, const QRect &band)
{
    const AxisCells &columns = g.columnCells;
    const QVector<int> &rowOf = g.rowCells.ownerOf;
    QVector<QRgb> rowColors(columns.visible.size());
    int cachedRow = -1;
    for (int y = band.top(); y <= band.bottom(); ++y) {
        const int r = rowOf.at(y);
        if (r != cachedRow) {
            for (int i = 0; i < columns.visible.size(); ++i)
                rowColors[i] = guideCellColor(s, columns.visible.at(i), r, g.columns, g.rows).rgb() | 0xff000000u;
            cachedRow = r;
        }
        auto *line = reinterpret_cast<QRgb *>(device.scanLine(y - band.top()));
        for (int xd = 0; xd < f.width; ++xd) {
            const int x = s.flipH ? f.width - 1 - xd : xd;
            line[xd] = rowColors.at(columns.slotOf.at(x));
        }
    }
}

// Calls `line` with the pixel of each inner cell boundary. Sub-pixel cells put a boundary
// on every pixel they span, so those are visited once per pixel, not once per cell.
template<typename Line>
void forEachBoundary(int count, double size, const Line &line)
{
    if (size >= 1.0) {
        for (int i = 1; i < count; ++i)
            line(int(std::floor(i * size)));
        return;
    }
    const int last = int(std::floor((count - 1.0) * size));
    for (int x = 0; x <= last; ++x)
        line(x);
}

// band: the device rows being painted; cells outside it are skipped.
void drawCells(QPainter &p, const GuideSettings &s, const Frame &f, const CellGrid &g, const QRect &band)
{
    const int columns = g.columns;
    const int rows = g.rows;
    const double cw = g.cellWidth;
    const double ch = g.cellHeight;
    const int fillW = int(std::ceil(cw));
    const int fillH = int(std::ceil(ch));
    const QColor light = lightLineColor(clampGuidePattern(s.guidePattern));
    const int innerWidth = std::max(1, int(std::lround(f.unit)));
    QColor inner = light;
    inner.setAlpha(light.alpha() / 2);

    const bool tiny = (cw < 4.0 || ch < 4.0) && !s.displayInnerline && !g.labels.valid;
    if (tiny) {
        if (auto *device = dynamic_cast<QImage *>(p.device()))
            fillSmallCells(*device, s, f, g, band);
    }
    for (int r : g.rowCells.visible) {
        if (tiny)
            break;
        const double y = s.inverseY ? f.height - (r + 1.0) * ch : r * ch;
        const int top = int(std::floor(y));
        if (top + fillH < band.top() - 1 || top > band.bottom() + 1)
            continue;
        for (int c : g.columnCells.visible) {
            const double x = s.inverseX ? f.width - (c + 1.0) * cw : c * cw;
            QRect cell(int(std::floor(x)), top, fillW, fillH);
            // Nothing is painted under the cells, so the outer cells reach the edges.
            const bool rightmost = s.inverseX ? c == 0 : c == columns - 1;
            const bool bottommost = s.inverseY ? r == 0 : r == rows - 1;
            if (rightmost)
                cell.setRight(f.width - 1);
            if (bottommost)
                cell.setBottom(f.height - 1);
            if (s.inverseX ? c == columns - 1 : c == 0)
                cell.setLeft(0);
            if (s.inverseY ? r == rows - 1 : r == 0)
                cell.setTop(0);
            QColor color = guideCellColor(s, c, r, columns, rows);
            color.setAlpha(255);
            p.fillRect(cell, color);
            if (s.displayInnerline) {
                // A cross through the cell centre halves each cell for finer alignment.
                const QRectF exact(x, y, cw, ch);
                const int cx = int(std::floor(exact.center().x() - innerWidth / 2.0));
                const int cy = int(std::floor(exact.center().y() - innerWidth / 2.0));
                p.fillRect(QRect(cx, cell.top(), innerWidth, fillH), inner);
                p.fillRect(QRect(cell.left(), cy, fillW, innerWidth), inner);
            }
            if (g.labels.valid)
                drawLabel(p, g.labels, QRectF(x, y, cw, ch), guideCellLabel(g.format, r, c));
        }
    }

    if (s.displayCellBoundary) {
        const int lw = std::max(1, int(std::lround(f.unit)));
        forEachBoundary(columns, cw, [&](int x) { p.fillRect(QRect(x - lw / 2, 0, lw, f.height), light); });
        forEachBoundary(rows, ch, [&](int y) { p.fillRect(QRect(0, y - lw / 2, f.width, lw), light); });
    }
}

// ---------------------------------------------------------------- fixed lines

void drawCrossLines(QPainter &p, const GuideSettings &s, const Frame &f)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    QPen pen(lightLineColor(clampGuidePattern(s.guidePattern)), std::max(1.0, 2.0 * f.unit));
    pen.setCapStyle(Qt::FlatCap);
    p.setPen(pen);
    p.drawLine(QLineF(0, 0, f.width, f.height));
    p.drawLine(QLineF(f.width, 0, 0, f.height));
    p.restore();
}

void drawCenterLines(QPainter &p, const GuideSettings &s, const Frame &f)
{
    const bool style1 = clampGuidePattern(s.guidePattern) == GuidePatternDefault;
    p.save();
    p.setOpacity(style1 ? 0.5 : 0.7);
    QPen pen(style1 ? QColor(Qt::white) : QColor(Qt::red), 2);
    pen.setCapStyle(Qt::SquareCap);
    pen.setJoinStyle(Qt::BevelJoin);
    p.setPen(pen);
    const double W = f.width, H = f.height;
    for (double x : {W / 2, W / 4, 3 * W / 4})
        p.drawLine(QLineF(x, 0, x, H));
    for (double y : {H / 2, H / 4, 3 * H / 4})
        p.drawLine(QLineF(0, y, W, y));
    p.restore();
}

void drawCircles(QPainter &p, const GuideSettings &s, const Frame &f)
{
    const double W = f.width, H = f.height;
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setOpacity(clampGuidePattern(s.guidePattern) == GuidePatternDefault ? 0.5 : 0.2);
    QPen pen(Qt::white, H / 300.0);
    pen.setCapStyle(Qt::SquareCap);
    pen.setJoinStyle(Qt::BevelJoin);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QRectF((W - H) / 2, 0, H, H));
    const double d = std::max(H / 4, 1.0);
    p.drawEllipse(QRectF(0, 0, d, d));
    p.drawEllipse(QRectF(W - d, 0, d, d));
    p.drawEllipse(QRectF(0, H - d, d, d));
    p.drawEllipse(QRectF(W - d, H - d, d, d));
    p.restore();
}

void drawOutline(QPainter &p, const Frame &f)
{
    p.save();
    QPen pen(Qt::white, 5);
    pen.setCapStyle(Qt::SquareCap);
    pen.setJoinStyle(Qt::BevelJoin);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(2.5, 2.5, f.width - 5, f.height - 5));
    p.restore();
}

// ---------------------------------------------------------------- centre stack

struct CenterStack {
    double resolutionSize = 0.0;
    QRectF resolutionRect;
};

CenterStack centerStack(const Frame &f)
{
    CenterStack c;
    c.resolutionSize = std::max(1.0, std::round(std::min(f.width, f.height) * 0.075 * f.fontScale));
    const double h = c.resolutionSize * 1.3;
    c.resolutionRect = QRectF(0, f.height / 2.0 - h / 2, f.width, h);
    return c;
}

// The built-in logo is decoded once; it never changes while the program runs.
QImage builtInLogo()
{
    static const QImage logo(QStringLiteral(":/assets/logo2000.png"));
    return logo;
}

QImage loadLogo(const GuideSettings &s)
{
    QImage logo;
    if (!s.logoPath.trimmed().isEmpty())
        logo.load(s.logoPath);
    if (logo.isNull())
        logo = builtInLogo();
    return logo;
}

// The logo fitted into its box, scaled once with filtering; the painter draws it unfiltered.
QImage prepareLogo(const GuideSettings &s, const Frame &f)
{
    const QImage logo = loadLogo(s);
    if (logo.isNull() || logo.width() <= 0 || logo.height() <= 0)
        return {};
    const double scale = std::isfinite(s.scale) ? std::clamp(s.scale, 0.05, 20.0) : 1.0;
    const double boxW = f.width * 0.22 * scale;
    const double boxH = f.height * 0.16 * scale;
    const double aspect = double(logo.width()) / logo.height();
    double w = boxW, h = boxW / aspect;
    if (h > boxH) {
        h = boxH;
        w = h * aspect;
    }
    const int iw = std::clamp(int(std::lround(w)), 1, kMaxSide);
    const int ih = std::clamp(int(std::lround(h)), 1, kMaxSide);
    return logo.scaled(iw, ih, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

void drawLogo(QPainter &p, const GuideSettings &s, const Frame &f, const CenterStack &stack, const QImage &logo)
{
    if (logo.isNull())
        return;
    const double bottom = stack.resolutionRect.top() - stack.resolutionSize * 0.2;
    p.save();
    p.setOpacity(std::isfinite(s.logoOpacity) ? std::clamp(s.logoOpacity, 0.0, 1.0) : 0.7);
    p.drawImage(QPointF(std::floor((f.width - logo.width()) / 2.0), std::floor(bottom - logo.height())), logo);
    p.restore();
}

void drawCenterTexts(QPainter &p, const GuideSettings &s, const Frame &f, const CenterStack &stack)
{
    const double shadow = std::max(1.0, stack.resolutionSize / 28.0);
    if (s.displayResolution) {
        p.setFont(guideFont(stack.resolutionSize));
        drawShadowedText(p, stack.resolutionRect, Qt::AlignCenter, guideResolutionText(s), shadow);
    }
    double y = stack.resolutionRect.bottom();
    if (s.displayReal) {
        const double size = std::max(1.0, stack.resolutionSize * 0.5);
        p.setFont(guideFont(size));
        const QRectF r(0, y, f.width, size * 1.4);
        drawShadowedText(p, r, Qt::AlignCenter, guidePhysicalSizeText(s), shadow * 0.6);
        y = r.bottom();
    }
    if (s.displaySquareStatus) {
        const double size = std::max(1.0, stack.resolutionSize * 0.4);
        p.setFont(guideFont(size));
        const bool square = guideCellsAreSquare(s);
        const QRectF r(0, y + size * 0.2, f.width, size * 1.4);
        drawShadowedText(p, r, Qt::AlignCenter, guideSquareStatusText(square), shadow * 0.5,
                         square ? QColor(140, 255, 160) : QColor(255, 200, 90));
    }
}

// ---------------------------------------------------------------- dimensions

void drawDimensions(QPainter &p, const GuideSettings &s, const Frame &f)
{
    const double W = f.width, H = f.height;
    const double lw = std::max(1.0, 2.0 * f.unit);
    const double arrow = std::max(4.0, 16.0 * f.unit);
    const QFont font = guideFont(std::max(1.0, std::min(W, H) * 0.028 * f.fontScale));
    const QColor lineColor(255, 230, 80);
    const QColor box(0, 0, 0, 170);
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    if (s.showWidthDimension) {
        const double y = H * 0.09;
        p.setPen(QPen(lineColor, lw, Qt::SolidLine, Qt::FlatCap));
        p.drawLine(QLineF(arrow * 0.5, y, W - arrow * 0.5, y));
        p.setPen(Qt::NoPen);
        p.setBrush(lineColor);
        drawArrowHead(p, QPointF(lw * 2, y), QPointF(-1, 0), arrow);
        drawArrowHead(p, QPointF(W - lw * 2, y), QPointF(1, 0), arrow);
        drawLabelBox(p, QPointF(W * 0.5 + W * 0.125, y), QStringLiteral("%1px").arg(s.pixelWidth), font, lineColor, box);
    }
    if (s.showHeightDimension) {
        const double x = W * 0.06;
        p.setPen(QPen(lineColor, lw, Qt::SolidLine, Qt::FlatCap));
        p.drawLine(QLineF(x, arrow * 0.5, x, H - arrow * 0.5));
        p.setPen(Qt::NoPen);
        p.setBrush(lineColor);
        drawArrowHead(p, QPointF(x, lw * 2), QPointF(0, -1), arrow);
        drawArrowHead(p, QPointF(x, H - lw * 2), QPointF(0, 1), arrow);
        p.translate(x, H * 0.5 + H * 0.125);
        p.rotate(-90);
        drawLabelBox(p, QPointF(0, 0), QStringLiteral("%1px").arg(s.pixelHeight), font, lineColor, box);
    }
    p.restore();
}

// ---------------------------------------------------------------- bottom texts

QRectF bottomBlockText(const Frame &f, const QStringList &lines, double fontSize)
{
    const QFontMetricsF fm(guideFont(fontSize));
    return fm.boundingRect(QRectF(0, 0, f.width * 0.8, 1e7), Qt::AlignHCenter | Qt::TextWordWrap,
                           lines.join(QLatin1Char('\n')));
}

double bottomBlockHeight(const Frame &f, const QStringList &lines, double fontSize)
{
    if (lines.isEmpty())
        return 0.0;
    const QFontMetricsF fm(guideFont(fontSize));
    return bottomBlockText(f, lines, fontSize).height() + 2 * fm.height() * 0.35;
}

// Draws a block of lines centred horizontally with its bottom at `bottom`; returns its top.
double drawBottomBlock(QPainter &p, const Frame &f, double bottom, const QStringList &lines, double fontSize,
                       const QColor &textColor)
{
    if (lines.isEmpty())
        return bottom;
    const QFont font = guideFont(fontSize);
    const QFontMetricsF fm(font);
    const double maxWidth = f.width * 0.8;
    const QRectF bound = fm.boundingRect(QRectF(0, 0, maxWidth, 1e7), Qt::AlignHCenter | Qt::TextWordWrap,
                                         lines.join(QLatin1Char('\n')));
    const double pad = fm.height() * 0.35;
    const QRectF box((f.width - bound.width()) / 2 - pad, bottom - bound.height() - 2 * pad, bound.width() + 2 * pad,
                     bound.height() + 2 * pad);
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 160));
    p.drawRoundedRect(box, pad, pad);
    p.setFont(font);
    p.setPen(textColor);
    p.drawText(box.adjusted(pad, pad, -pad, -pad), Qt::AlignHCenter | Qt::TextWordWrap, lines.join(QLatin1Char('\n')));
    p.restore();
    return box.top();
}

// ---------------------------------------------------------------- layers

QPainterPath layerShapePath(const GuideLayerObject &l)
{
    QPainterPath path;
    const QRectF rect(-l.width / 2, -l.height / 2, l.width, l.height);
    if (l.isCircle()) {
        path.addEllipse(rect);
    } else if (l.cornerRadius > 0.0) {
        const double r = std::min(l.cornerRadius, std::min(std::abs(l.width), std::abs(l.height)) / 2);
        path.addRoundedRect(rect, r, r);
    } else {
        path.addRect(rect);
    }
    return path;
}

void drawImageLayer(QPainter &p, const GuideLayerObject &l, const QImage &image)
{
    if (image.isNull())
        return;
    // Crops are fractions of the source removed from each side.
    const double left = std::clamp(l.cropLeft, 0.0, 1.0);
    const double top = std::clamp(l.cropTop, 0.0, 1.0);
    const double right = std::clamp(l.cropRight, 0.0, 1.0 - left);
    const double bottom = std::clamp(l.cropBottom, 0.0, 1.0 - top);
    const QRectF source(image.width() * left, image.height() * top, image.width() * (1.0 - left - right),
                        image.height() * (1.0 - top - bottom));
    if (source.width() < 1.0 || source.height() < 1.0)
        return;
    p.save();
    p.translate(l.centerX, l.centerY);
    p.rotate(l.rotationDegrees);
    p.setOpacity(std::clamp(l.opacity, 0.0, 1.0));
    p.setRenderHint(QPainter::SmoothPixmapTransform, true);
    p.drawImage(QRectF(-l.width / 2, -l.height / 2, l.width, l.height), image, source);
    p.restore();
}

void drawMaskLayer(QPainter &p, const GuideLayerObject &l, const Frame &f)
{
    const QPainterPath shape = layerShapePath(l);
    QTransform placement;
    placement.translate(l.centerX, l.centerY);
    placement.rotate(l.rotationDegrees);
    const QPainterPath placed = placement.map(shape);
    QPainterPath region = placed;
    if (l.maskInverse) {
        QPainterPath all;
        all.addRect(QRectF(-1, -1, f.width + 2, f.height + 2));
        region = all.subtracted(placed);
    }
    p.save();
    p.setOpacity(std::clamp(l.opacity, 0.0, 1.0));
    p.setRenderHint(QPainter::Antialiasing, true);
    if (!l.maskWireframe) {
        p.fillPath(region, l.fillColor);
        p.restore();
        return;
    }
    // Wireframe: the outline and U/V lines across the shape, clipped to the masked region.
    const double thickness = std::max(0.5, l.maskWireframeThickness);
    QPen pen(l.fillColor, thickness);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawPath(placed);
    p.setClipPath(region);
    const QRectF local(-l.width / 2, -l.height / 2, l.width, l.height);
    const int uLines = std::clamp(l.maskULines, 0, 4096);
    const int vLines = std::clamp(l.maskVLines, 0, 4096);
    if (l.maskInverse) {
        // Outside the shape the lines continue the shape's grid over the whole guide.
        p.setTransform(placement, true);
        const double stepX = l.width / (uLines + 1);
        const double stepY = l.height / (vLines + 1);
        const double reach = std::hypot(f.width, f.height) * 2;
        if (uLines > 0 && std::abs(stepX) > std::max(0.5, reach / 2048)) {
            for (double x = local.left(); x > -reach; x -= stepX)
                p.drawLine(QLineF(x, -reach, x, reach));
            for (double x = local.left() + stepX; x < reach; x += stepX)
                p.drawLine(QLineF(x, -reach, x, reach));
        }
        if (vLines > 0 && std::abs(stepY) > std::max(0.5, reach / 2048)) {
            for (double y = local.top(); y > -reach; y -= stepY)
                p.drawLine(QLineF(-reach, y, reach, y));
            for (double y = local.top() + stepY; y < reach; y += stepY)
                p.drawLine(QLineF(-reach, y, reach, y));
        }
    } else {
        p.setTransform(placement, true);
        for (int i = 1; i <= uLines; ++i) {
            const double x = local.left() + l.width * i / (uLines + 1);
            p.drawLine(QLineF(x, local.top(), x, local.bottom()));
        }
        for (int j = 1; j <= vLines; ++j) {
            const double y = local.top() + l.height * j / (vLines + 1);
            p.drawLine(QLineF(local.left(), y, local.right(), y));
        }
    }
    p.restore();
}

// images: one per layer, loaded once per render (null for masks and missing files).
void drawLayers(QPainter &p, const GuideSettings &s, const Frame &f, const QVector<QImage> &images)
{
    for (int i = 0; i < s.imageObjects.size(); ++i) {
        const GuideLayerObject &l = s.imageObjects.at(i);
        if (!l.visible || !(std::abs(l.width) > 0.0) || !(std::abs(l.height) > 0.0))
            continue;
        bool finite = true;
        for (double v : {l.centerX, l.centerY, l.width, l.height, l.rotationDegrees, l.opacity, l.cornerRadius,
                         l.maskWireframeThickness, l.cropLeft, l.cropTop, l.cropRight, l.cropBottom})
            finite = finite && std::isfinite(v);
        if (!finite || std::abs(l.width) > 1e7 || std::abs(l.height) > 1e7)
            continue;
        if (l.isMask())
            drawMaskLayer(p, l, f);
        else
            drawImageLayer(p, l, images.value(i));
    }
}

// ---------------------------------------------------------------- projector array

QColor projectorColor(int index)
{
    static constexpr int hues[] = {195, 45, 120, 300, 0, 270, 170, 80};
    return QColor::fromHsv(hues[index % 8], 200, 255, 235);
}

QString formatNumber(double value, int decimals)
{
    QString text = QString::number(value, 'f', decimals);
    if (text.contains(QLatin1Char('.'))) {
        while (text.endsWith(QLatin1Char('0')))
            text.chop(1);
        if (text.endsWith(QLatin1Char('.')))
            text.chop(1);
    }
    return text;
}

// Drawn on the finished (rotated) image, so the array lies on the surface as it hangs.
void drawProjectorInfo(QPainter &p, const GuideSettings &s, int width, int height, double unit, double fontScale,
                       double bottom)
{
    const ProjectorArrayLayout layout = computeProjectorArray(s);
    const double sx = width / layout.surfaceWidthMm;
    const double sy = height / layout.surfaceHeightMm;
    const double k = std::isfinite(s.projectorScale) && s.projectorScale > 0.0 ? std::min(s.projectorScale, 100.0) : 1.0;
    const QPointF center(width / 2.0, height / 2.0);
    QVector<QRectF> rects;
    rects.reserve(layout.projectorRects.size());
    for (const QRectF &mm : layout.projectorRects) {
        const QRectF px(mm.x() * sx, mm.y() * sy, mm.width() * sx, mm.height() * sy);
        rects.append(QRectF(center + (px.topLeft() - center) * k, px.size() * k));
    }

    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    // Overlap zones: each pair's intersection, so zones where more images meet grow brighter.
    p.setPen(Qt::NoPen);
    for (int i = 0; i < rects.size(); ++i) {
        for (int j = i + 1; j < rects.size(); ++j) {
            const QRectF zone = rects[i].intersected(rects[j]);
            if (zone.isValid() && zone.width() > 0.5 && zone.height() > 0.5) {
                p.setBrush(QColor(255, 255, 255, 56));
                p.drawRect(zone);
            }
        }
    }
    const double penWidth = std::max(2.0, 4.0 * unit);
    p.setBrush(Qt::NoBrush);
    for (int i = 0; i < rects.size(); ++i) {
        QPen pen(projectorColor(i), penWidth);
        pen.setJoinStyle(Qt::MiterJoin);
        p.setPen(pen);
        p.drawRect(rects[i].adjusted(penWidth / 2, penWidth / 2, -penWidth / 2, -penWidth / 2));
    }

    const QSize px = projectorImagePixels(s);
    const double labelSize = std::max(1.0, std::min(width, height) * 0.026 * fontScale);
    const QFont labelFont = guideFont(labelSize);
    for (int i = 0; i < rects.size(); ++i) {
        const QRectF &r = rects[i];
        if (s.projectorFloor) {
            // Floor projection: the projector hangs above its image centre; mark the spot.
            const double m = std::max(6.0, 18.0 * unit);
            p.setPen(QPen(projectorColor(i), std::max(1.5, 2.5 * unit)));
            p.setBrush(Qt::NoBrush);
            p.drawEllipse(r.center(), m, m);
            p.drawLine(QLineF(r.center() - QPointF(m * 1.5, 0), r.center() + QPointF(m * 1.5, 0)));
            p.drawLine(QLineF(r.center() - QPointF(0, m * 1.5), r.center() + QPointF(0, m * 1.5)));
        }
        // Labelled within the part of the image the projector covers.
        const QRectF visible = r.intersected(QRectF(0, 0, width, height));
        if (visible.isEmpty())
            continue;
        const QString text = QStringLiteral("PJ %1\n%2x%3px").arg(i + 1).arg(px.width()).arg(px.height());
        const QFontMetricsF fm(labelFont);
        const double halfBox = fm.horizontalAdvance(text.section(QLatin1Char('\n'), 1)) / 2 + fm.height() * 0.4;
        const double x = std::clamp(visible.center().x(), visible.left() + halfBox,
                                    std::max(visible.left() + halfBox, visible.right() - halfBox));
        const QPointF at(x, visible.top() + visible.height() * 0.25);
        QColor c = projectorColor(i);
        c.setAlpha(255);
        drawLabelBox(p, at, text, labelFont, c, QColor(0, 0, 0, 170));
    }
    p.restore();

    Frame f;
    f.width = width;
    f.height = height;
    QStringList lines;
    // Korean under a Korean system locale, like the square status.
    const bool korean = QLocale::system().language() == QLocale::Korean;
    const QString sep = QStringLiteral("  |  ");
    QString overlap = formatNumber(layout.overlapX * 100.0, 1) + QLatin1Char('%');
    if (layout.countY > 1 && std::abs(layout.overlapY - layout.overlapX) > 1e-6)
        overlap += QStringLiteral(" / ") + formatNumber(layout.overlapY * 100.0, 1) + QLatin1Char('%');
    QString array = (korean ? QStringLiteral("프로젝터 %1 x %2대") : QStringLiteral("%1 x %2 Projectors"))
                        .arg(layout.countX)
                        .arg(layout.countY)
                    + sep + (korean ? QStringLiteral("겹침 %1") : QStringLiteral("Overlap %1")).arg(overlap);
    if (s.projectorVerticalProjection)
        array += sep + (korean ? QStringLiteral("세로 투사") : QStringLiteral("Vertical Projection"));
    if (s.projectorFloor)
        array += sep + (korean ? QStringLiteral("바닥 투사") : QStringLiteral("Floor Projection"));
    lines << array;
    if (s.displayFinalResolutionInfo) {
        const QString distanceLabel = s.projectorFloor
                                          ? (korean ? QStringLiteral("설치 높이") : QStringLiteral("Mount Height"))
                                          : (korean ? QStringLiteral("투사 거리") : QStringLiteral("Throw Distance"));
        lines << (korean ? QStringLiteral("투사비 %1") : QStringLiteral("Throw Ratio %1")).arg(formatNumber(layout.throwRatio, 3))
                     + sep + QStringLiteral("%1 %2 mm").arg(distanceLabel, formatNumber(layout.throwDistanceMm, 0)) + sep
                     + (korean ? QStringLiteral("최종 해상도 %1x%2px") : QStringLiteral("Final Resolution %1x%2px"))
                           .arg(layout.effectiveResolution.width())
                           .arg(layout.effectiveResolution.height());
    }
    drawBottomBlock(p, f, bottom, lines, std::max(1.0, std::min(width, height) * 0.024 * fontScale),
                    QColor(255, 236, 150));
}

} // namespace

// ---------------------------------------------------------------- public helpers

QString englishRowName(int row)
{
    QString name;
    for (qint64 n = std::max(row, 0); n >= 0; n = n / 26 - 1)
        name.prepend(QChar(char16_t(u'A' + n % 26)));
    return name;
}

QString koreanRowName(int row)
{
    const QStringList &syllables = koreanSyllables();
    const int r = std::max(row, 0);
    if (r < 56)
        return syllables.at(r);
    return syllables.at(r % 56) + QString::number(r / 56 + 1);
}

QString guideCellLabel(int numberTextFormat, int row, int column)
{
    switch (clampGuideNumberFormat(numberTextFormat)) {
    case GuideNumberRowCol:
        return QStringLiteral("%1-%2").arg(row + 1).arg(column + 1);
    case GuideNumberColRow:
        return QStringLiteral("%1-%2").arg(column + 1).arg(row + 1);
    case GuideNumberEnglish:
        return englishRowName(row) + QString::number(column + 1);
    default:
        return koreanRowName(row) + QString::number(column + 1);
    }
}

bool guideCellsAreSquare(const GuideSettings &s)
{
    const double cw = double(s.pixelWidth) / guideGridColumns(s);
    const double ch = double(s.pixelHeight) / guideGridRows(s);
    return std::abs(cw - ch) <= 0.001;
}

QString guideSquareStatusText(bool square)
{
    if (QLocale::system().language() == QLocale::Korean)
        return square ? QStringLiteral("정사각형") : QStringLiteral("정사각형 아님");
    return square ? QStringLiteral("Square") : QStringLiteral("Not square");
}

QString guideResolutionText(const GuideSettings &s)
{
    return QStringLiteral("%1x%2px").arg(s.pixelWidth).arg(s.pixelHeight);
}

QString guidePhysicalSizeText(const GuideSettings &s)
{
    return QStringLiteral("(%1x%2mm)").arg(s.realWidth).arg(s.realHeight);
}

QString guideSizeCaption(const GuideSettings &s)
{
    return QStringLiteral("%1x%2px (%3x%4mm)").arg(s.pixelWidth).arg(s.pixelHeight).arg(s.realWidth).arg(s.realHeight);
}

namespace {

// The bands an image of `height` rows is painted in. They depend on the height alone, never
// on the thread count, so every machine produces the same bytes (antialiased edges that
// cross a band boundary may round differently than under one painter).
QVector<QRect> paintBands(int width, int height)
{
    const int bandCount = std::clamp(height / 64, 1, 8);
    QVector<QRect> bands;
    bands.reserve(bandCount);
    for (int i = 0; i < bandCount; ++i) {
        const int y0 = int(qint64(height) * i / bandCount);
        const int y1 = int(qint64(height) * (i + 1) / bandCount);
        bands.append(QRect(0, y0, width, y1 - y0));
    }
    return bands;
}

// Paints into the bands of the image on the thread pool, each band its own painter
// translated by whole pixels.
void paintInBands(QImage &image, int threads, const std::function<void(QPainter &, const QRect &)> &paint)
{
    const QVector<QRect> bands = paintBands(image.width(), image.height());
    uchar *bits = image.bits();
    const qsizetype bpl = image.bytesPerLine();
    auto run = [&](const QRect &band) {
        QImage sub(bits + band.y() * bpl, image.width(), band.height(), bpl, image.format());
        QPainter p(&sub);
        p.translate(0, -band.y());
        paint(p, band);
    };
    if (bands.size() == 1 || threads <= 1)
        std::for_each(bands.begin(), bands.end(), run);
    else
        QtConcurrent::blockingMap(bands, run);
}

// A quarter turn clockwise, in tiles on the thread pool.
QImage rotateClockwise(const QImage &source, int threads)
{
    const int w = source.width(), h = source.height();
    QImage out(h, w, source.format());
    if (out.isNull())
        return {};
    const uchar *src = source.constBits();
    const qsizetype srcBpl = source.bytesPerLine();
    uchar *dst = out.bits();
    const qsizetype dstBpl = out.bytesPerLine();
    constexpr int tile = 64;
    QVector<int> stripes; // output rows in stripes of one tile
    for (int y = 0; y < w; y += tile)
        stripes.append(y);
    auto run = [&](int yo0) {
        const int yo1 = std::min(yo0 + tile, w);
        for (int xo0 = 0; xo0 < h; xo0 += tile) {
            const int xo1 = std::min(xo0 + tile, h);
            for (int yo = yo0; yo < yo1; ++yo) {
                quint32 *line = reinterpret_cast<quint32 *>(dst + yo * dstBpl);
                for (int xo = xo0; xo < xo1; ++xo)
                    line[xo] = reinterpret_cast<const quint32 *>(src + (h - 1 - xo) * srcBpl)[yo];
            }
        }
    };
    if (threads <= 1)
        std::for_each(stripes.begin(), stripes.end(), run);
    else
        QtConcurrent::blockingMap(stripes, run);
    return out;
}

Frame guideFrame(const GuideSettings &s)
{
    Frame f;
    f.width = std::clamp(s.pixelWidth, 1, kMaxSide);
    f.height = std::clamp(s.pixelHeight, 1, kMaxSide);
    const double scale = std::isfinite(s.scale) ? std::clamp(s.scale, 0.05, 20.0) : 1.0;
    f.unit = std::min(f.width, f.height) / 1080.0 * scale;
    f.fontScale = std::isfinite(s.fontScale) ? std::clamp(s.fontScale, 0.01, 50.0) : 1.0;
    return f;
}

} // namespace

// Everything the bands share, prepared once per guide.
struct GuideBandPainter::Prepared {
    GuideSettings s;
    Frame f;
    CellGrid grid;
    CenterStack stack;
    QImage logo;
    QVector<QImage> layerImages;
    QStringList explainLines;
    double explainBottom = 0.0;
    double explainFont = 1.0;
    double explainTop = -1.0;

    explicit Prepared(const GuideSettings &settings)
        : s(settings)
        , f(guideFrame(settings))
        , stack(centerStack(f))
    {
        // The logo is decoded and scaled on another core while the labels are drawn.
        QFuture<QImage> logoJob;
        if (s.displayLogo)
            logoJob = QtConcurrent::run([this] { return prepareLogo(s, f); });
        grid = prepareCells(s, f);
        if (s.displayLogo)
            logo = logoJob.result();
        layerImages.resize(s.imageObjects.size());
        for (int i = 0; i < s.imageObjects.size(); ++i) {
            const GuideLayerObject &l = s.imageObjects.at(i);
            if (l.visible && !l.isMask() && !l.filePath.isEmpty())
                layerImages[i] = QImage(l.filePath);
        }
        if (s.displayExplain) {
            explainLines << guideSizeCaption(s);
            if (!s.explain.trimmed().isEmpty())
                explainLines << s.explain;
        }
        explainBottom = f.height - std::max(8.0, f.height * 0.03);
        explainFont = std::max(1.0, std::min(f.width, f.height) * 0.026 * f.fontScale);
        if (s.displayExplain)
            explainTop = explainBottom - bottomBlockHeight(f, explainLines, explainFont);
    }

    // Everything but the projector information, in the guide's own (unrotated) frame.
    void paintContent(QPainter &p, const QRect &band) const
    {
        p.setRenderHint(QPainter::Antialiasing, false);
        p.setRenderHint(QPainter::TextAntialiasing, true);
        p.setRenderHint(QPainter::SmoothPixmapTransform, false);
        if (s.flipH) {
            p.scale(-1, 1);
            p.translate(-f.width, 0);
        }
        drawCells(p, s, f, grid, band);
        if (s.displayCrossline)
            drawCrossLines(p, s, f);
        if (s.displayCenterline)
            drawCenterLines(p, s, f);
        if (s.displayCircle)
            drawCircles(p, s, f);
        if (s.displayOutline)
            drawOutline(p, f);
        if (s.displayLogo)
            drawLogo(p, s, f, stack, logo);
        drawCenterTexts(p, s, f, stack);
        drawDimensions(p, s, f);
        if (s.displayExplain)
            drawBottomBlock(p, f, explainBottom, explainLines, explainFont, Qt::white);
        drawLayers(p, s, f, layerImages);
    }

    // The projector information, drawn upright on the image as it hangs (after the turn).
    void paintProjectorInfo(QPainter &p, int w, int h) const
    {
        // Above the description block when both sit at the same bottom edge.
        const double bottom = explainTop >= 0.0 && !s.rotate ? explainTop - std::max(4.0, h * 0.01)
                                                             : h - std::max(8.0, h * 0.03);
        p.setRenderHint(QPainter::TextAntialiasing, true);
        if (s.flipH) {
            // Mirrored across the image as it hangs, so it reads from behind the
            // screen like the rest of a flipped guide, rotated or not.
            p.scale(-1, 1);
            p.translate(-w, 0);
        }
        drawProjectorInfo(p, s, w, h, f.unit, f.fontScale, bottom);
    }
};

QSize renderedGuideSize(const GuideSettings &settings)
{
    const Frame f = guideFrame(settings);
    return settings.rotate ? QSize(f.height, f.width) : QSize(f.width, f.height);
}

GuideBandPainter::GuideBandPainter(const GuideSettings &settings)
    : d(std::make_unique<Prepared>(settings))
    , m_bands(paintBands(d->f.width, d->f.height))
{
}

GuideBandPainter::~GuideBandPainter() = default;

void GuideBandPainter::paintBand(int index, QImage &rows) const
{
    const QRect band = m_bands.at(index);
    {
        QPainter p(&rows);
        p.translate(0, -band.y());
        d->paintContent(p, band);
    }
    if (d->s.displayProjectorInfo) {
        // A painter of its own, as when the whole image is painted in two passes.
        QPainter p(&rows);
        p.translate(0, -band.y());
        d->paintProjectorInfo(p, d->f.width, d->f.height);
    }
}

QImage renderGuideImage(const GuideSettings &s)
{
    return renderGuideImage(s, 0);
}

namespace {
QImage renderGuideImageOrThrow(const GuideSettings &s, int threads);
} // namespace

QImage renderGuideImage(const GuideSettings &s, int threads)
{
    // Out of memory anywhere in the render (the workers report it wrapped) is a failed
    // render, never the end of the process.
    try {
        return renderGuideImageOrThrow(s, threads);
    } catch (const std::exception &) {
        return {};
    }
}

namespace {

QImage renderGuideImageOrThrow(const GuideSettings &s, int threads)
{
    if (threads <= 0)
        threads = std::max(1, QThread::idealThreadCount());
    const Frame f = guideFrame(s);

    // Painted premultiplied (the fast path). Opaque cells cover every pixel first, so
    // every pixel ends opaque and the bytes are already those of plain ARGB32.
    QImage image(f.width, f.height, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};

    const GuideBandPainter::Prepared prepared(s);
    paintInBands(image, threads, [&](QPainter &p, const QRect &band) { prepared.paintContent(p, band); });

    if (s.rotate) {
        image = rotateClockwise(image, threads);
        if (image.isNull())
            return {};
    }

    if (s.displayProjectorInfo) {
        const int w = image.width(), h = image.height();
        paintInBands(image, threads, [&](QPainter &p, const QRect &) { prepared.paintProjectorInfo(p, w, h); });
    }

    image.reinterpretAsFormat(QImage::Format_ARGB32);
    return image;
}

} // namespace

QFont guideTextFont(double pixelSize)
{
    return guideFont(pixelSize);
}
