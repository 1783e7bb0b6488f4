// Draws the program's logo and icons into assets/.
//
// Build and run from the repository root:
//   g++ -std=c++20 -fPIC tools/make_artwork.cpp -o /tmp/make_artwork $(pkg-config --cflags --libs Qt6Gui)
//   QT_QPA_PLATFORM=offscreen /tmp/make_artwork assets
//
// The mark is a projector throwing a beam onto a guide grid, drawn as vector shapes in
// a 64-unit square so that every size is sharp.

#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <cstdio>

namespace {

struct Palette
{
    QColor accent;      // beam and grid
    QColor accentLight; // lens and grid centre lines
    QColor backTop;
    QColor backBottom;
};

const Palette kBlue{QColor(64, 196, 255), QColor(190, 238, 255), QColor(36, 48, 62), QColor(14, 19, 27)};
const Palette kGreen{QColor(62, 214, 140), QColor(200, 255, 225), QColor(30, 54, 46), QColor(11, 22, 18)};

// Draws the mark into the square (0, 0, 64, 64) of the painter's current transform.
void drawMark(QPainter &p, const Palette &c, bool withBackground)
{
    p.setRenderHint(QPainter::Antialiasing);
    if (withBackground) {
        QLinearGradient back(0, 0, 0, 64);
        back.setColorAt(0, c.backTop);
        back.setColorAt(1, c.backBottom);
        p.setPen(QPen(QColor(c.accent.red(), c.accent.green(), c.accent.blue(), 110), 1.4));
        p.setBrush(back);
        p.drawRoundedRect(QRectF(2.5, 2.5, 59, 59), 13, 13);
    }

    // The guide on the screen: a framed 4 x 4 grid with brighter centre lines.
    const QRectF screen(33, 12, 24, 40);
    QLinearGradient screenFill(screen.topLeft(), screen.bottomRight());
    screenFill.setColorAt(0, QColor(c.accent.red(), c.accent.green(), c.accent.blue(), 70));
    screenFill.setColorAt(1, QColor(c.accent.red(), c.accent.green(), c.accent.blue(), 25));
    p.setPen(Qt::NoPen);
    p.setBrush(screenFill);
    p.drawRect(screen);

    // The beam from the lens to the screen edges.
    const QPointF lens(19.5, 32);
    QPainterPath beam;
    beam.moveTo(lens + QPointF(0, -3.2));
    beam.lineTo(screen.topLeft());
    beam.lineTo(screen.bottomLeft());
    beam.lineTo(lens + QPointF(0, 3.2));
    beam.closeSubpath();
    QLinearGradient beamFill(lens, QPointF(screen.left(), lens.y()));
    beamFill.setColorAt(0, QColor(c.accentLight.red(), c.accentLight.green(), c.accentLight.blue(), 210));
    beamFill.setColorAt(1, QColor(c.accent.red(), c.accent.green(), c.accent.blue(), 60));
    p.setBrush(beamFill);
    p.drawPath(beam);

    QPen grid(QColor(c.accent.red(), c.accent.green(), c.accent.blue(), 200), 0.9);
    p.setPen(grid);
    p.setBrush(Qt::NoBrush);
    for (int i = 1; i < 4; ++i) {
        const double x = screen.left() + screen.width() * i / 4.0;
        const double y = screen.top() + screen.height() * i / 4.0;
        if (i == 2)
            continue;
        p.drawLine(QPointF(x, screen.top()), QPointF(x, screen.bottom()));
        p.drawLine(QPointF(screen.left(), y), QPointF(screen.right(), y));
    }
    p.setPen(QPen(c.accentLight, 1.3));
    p.drawLine(QPointF(screen.center().x(), screen.top()), QPointF(screen.center().x(), screen.bottom()));
    p.drawLine(QPointF(screen.left(), screen.center().y()), QPointF(screen.right(), screen.center().y()));
    p.drawEllipse(screen.center(), 6.0, 6.0);
    p.setPen(QPen(c.accent, 1.8));
    p.drawRect(screen);

    // The projector: a body with a bright lens facing the screen.
    QLinearGradient body(0, 25, 0, 39);
    body.setColorAt(0, QColor(236, 240, 244));
    body.setColorAt(1, QColor(150, 160, 170));
    p.setPen(Qt::NoPen);
    p.setBrush(body);
    p.drawRoundedRect(QRectF(6, 25, 13, 14), 3, 3);
    p.setBrush(QColor(90, 100, 110));
    p.drawRect(QRectF(8, 39, 3, 3));
    p.drawRect(QRectF(14, 39, 3, 3));
    QRadialGradient glow(lens, 5.5);
    glow.setColorAt(0, Qt::white);
    glow.setColorAt(0.45, c.accentLight);
    glow.setColorAt(1, QColor(c.accent.red(), c.accent.green(), c.accent.blue(), 0));
    p.setBrush(glow);
    p.drawEllipse(lens, 5.5, 5.5);
    p.setBrush(QColor(20, 28, 36));
    p.drawEllipse(lens, 2.6, 2.6);
    p.setBrush(c.accentLight);
    p.drawEllipse(lens, 1.5, 1.5);
}

QImage renderIcon(int size, const Palette &palette)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.scale(size / 64.0, size / 64.0);
    drawMark(p, palette, true);
    return image;
}

QImage renderLogo(const QString &fontFamily)
{
    const int width = 2000;
    const int height = 560;
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);

    p.save();
    p.translate(40, 40);
    p.scale(480 / 64.0, 480 / 64.0);
    drawMark(p, kGreen, true);
    p.restore();

    QFont title(fontFamily);
    title.setPixelSize(200);
    title.setWeight(QFont::ExtraBold);
    title.setLetterSpacing(QFont::PercentageSpacing, 96);
    p.setFont(title);
    const int textLeft = 590;
    p.setPen(QColor(240, 244, 248));
    p.drawText(QRect(textLeft, 40, width - textLeft, 260), Qt::AlignLeft | Qt::AlignBottom, QStringLiteral("Vantreo"));
    const int vantreoWidth = QFontMetrics(title).horizontalAdvance(QStringLiteral("Vantreo "));
    p.setPen(kGreen.accent);
    p.drawText(QRect(textLeft + vantreoWidth, 40, width, 260), Qt::AlignLeft | Qt::AlignBottom, QStringLiteral("Guide"));

    // A thin measured rule under the name, like a guide's dimension line.
    const double ruleY = 345;
    const double ruleRight = width - 60;
    p.setPen(QPen(QColor(kGreen.accent.red(), kGreen.accent.green(), kGreen.accent.blue(), 200), 5));
    p.drawLine(QPointF(textLeft + 8, ruleY), QPointF(ruleRight, ruleY));
    for (int i = 0; i <= 16; ++i) {
        const double x = textLeft + 8 + (ruleRight - textLeft - 8) * i / 16.0;
        const double tick = (i % 4 == 0) ? 28 : 14;
        p.drawLine(QPointF(x, ruleY - tick), QPointF(x, ruleY));
    }

    QFont tagline(fontFamily);
    tagline.setPixelSize(80);
    tagline.setWeight(QFont::ExtraBold);
    p.setFont(tagline);
    p.setPen(QColor(200, 210, 218));
    p.drawText(QRect(textLeft + 8, 375, width - textLeft, 120), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("Projection planning guides"));
    return image;
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    const QString outDir = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("assets");
    const QDir dir(outDir);

    QString family = QStringLiteral("Sans Serif");
    const int fontId = QFontDatabase::addApplicationFont(dir.filePath(QStringLiteral("NanumGothicExtraBold.ttf")));
    if (fontId >= 0 && !QFontDatabase::applicationFontFamilies(fontId).isEmpty())
        family = QFontDatabase::applicationFontFamilies(fontId).first();

    bool ok = renderIcon(64, kBlue).save(dir.filePath(QStringLiteral("icon64.png")), "PNG");
    QImageWriter ico(dir.filePath(QStringLiteral("icon64_green.ico")), "ico");
    ok = ico.write(renderIcon(64, kGreen).convertToFormat(QImage::Format_ARGB32)) && ok;
    ok = renderLogo(family).save(dir.filePath(QStringLiteral("logo2000.png")), "PNG") && ok;
    // Larger previews for looking at the mark; not part of the resources.
    if (argc > 2)
        renderIcon(512, kGreen).save(QString::fromLocal8Bit(argv[2]), "PNG");
    std::fprintf(stderr, ok ? "artwork written to %s\n" : "could not write artwork to %s\n", qPrintable(outDir));
    return ok ? 0 : 1;
}
