#include "scene/gl/SceneTextAtlas.h"

#include "scene/LensModel.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

QFont labelFont(int pixelSize, bool bold)
{
    QFont font(QStringLiteral("Sans Serif"));
    font.setPixelSize(std::max(6, pixelSize));
    font.setBold(bold);
    font.setStyleStrategy(QFont::PreferAntialias);
    return font;
}

// A rounded plate with an outline and the text on it; straight alpha so GL blends it as it is.
QImage labelImage(const QString &text, int pixelSize, const QColor &textColor, const QColor &plateColor, bool bold)
{
    const QFont font = labelFont(pixelSize, bold);
    const QFontMetrics metrics(font);
    const int padX = std::max(3, pixelSize / 3);
    const int padY = std::max(2, pixelSize / 5);
    QStringList lines = text.split(QLatin1Char('\n'));
    int textWidth = 1;
    for (const QString &line : lines)
        textWidth = std::max(textWidth, metrics.horizontalAdvance(line));
    const int lineHeight = metrics.height();
    const int width = std::min(1000, textWidth + 2 * padX);
    const int height = std::min(1000, lineHeight * int(lines.size()) + 2 * padY);
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    if (plateColor.alpha() > 0) {
        QPainterPath plate;
        plate.addRoundedRect(QRectF(0.5, 0.5, width - 1.0, height - 1.0), padY + 1.0, padY + 1.0);
        painter.fillPath(plate, plateColor);
        // A rim in the text's colour keeps the plate apart from a surface of its own shade.
        QColor rim = textColor;
        rim.setAlpha(110);
        painter.strokePath(plate, QPen(rim, 1.0));
    }
    painter.setFont(font);
    painter.setPen(textColor);
    for (int i = 0; i < lines.size(); ++i)
        painter.drawText(QPointF(padX, padY + i * lineHeight + metrics.ascent()), lines.at(i));
    painter.end();
    return image.convertToFormat(QImage::Format_RGBA8888);
}

QString number(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

} // namespace

QString dimensionLabelText(QChar letter, double millimetres)
{
    return QStringLiteral("%1 %2mm").arg(letter).arg(qRound64(millimetres));
}

QString namedDimensionLabelText(const QString &name, double millimetres)
{
    return QStringLiteral("%1 %2mm").arg(name).arg(qRound64(millimetres));
}

DimensionTextAtlasEntry dimensionTextAtlasEntry(const QString &text, int pixelSize)
{
    DimensionTextAtlasEntry entry;
    entry.key = QStringLiteral("dimension|%1|%2").arg(text).arg(pixelSize);
    entry.image = labelImage(text, pixelSize, QColor(255, 255, 255), QColor(20, 22, 26, 190), false);
    return entry;
}

DimensionTextAtlasEntry annotationCommentAtlasEntry(const QString &text, double fontScale, double scaleX, double scaleY)
{
    DimensionTextAtlasEntry entry;
    entry.key = QStringLiteral("annotation|%1|%2|%3|%4").arg(text, number(fontScale, 3), number(scaleX, 3), number(scaleY, 3));
    const double scale = std::clamp(fontScale * std::sqrt(std::max(0.01, scaleX * scaleY)), 0.25, 8.0);
    entry.image = labelImage(text.isEmpty() ? QStringLiteral(" ") : text, int(std::lround(15 * scale)),
                             QColor(20, 20, 20), QColor(255, 244, 170, 235), false);
    return entry;
}

DimensionTextAtlasEntry projectorNameAtlasEntry(const QString &name)
{
    DimensionTextAtlasEntry entry;
    entry.key = QStringLiteral("projector-name|%1").arg(name);
    entry.image = labelImage(name.isEmpty() ? QStringLiteral(" ") : name, 15, QColor(255, 255, 255),
                             QColor(20, 22, 26, 200), true);
    return entry;
}

DimensionTextAtlasEntry projectorDimensionTextAtlasEntry(const QString &text)
{
    DimensionTextAtlasEntry entry;
    entry.key = QStringLiteral("projector-dimension-green|%1").arg(text);
    entry.image = labelImage(text, 13, QColor(90, 255, 120), QColor(10, 24, 12, 190), false);
    return entry;
}

DimensionTextAtlasEntry viewportFpsAtlasEntry(double framesPerSecond, int pixelSize)
{
    const QString rate = number(std::isfinite(framesPerSecond) ? framesPerSecond : 0.0, 1);
    DimensionTextAtlasEntry entry;
    entry.key = QStringLiteral("viewport-fps|%1|%2").arg(rate).arg(pixelSize);
    entry.image = labelImage(QStringLiteral("FPS: %1").arg(rate), pixelSize, QColor(255, 255, 255),
                             QColor(0, 0, 0, 150), false);
    return entry;
}

DimensionTextAtlasEntry renderProjectorCameraResolutionFrame(int width, int height)
{
    DimensionTextAtlasEntry entry;
    entry.key = QStringLiteral("projector-camera-resolution|%1|%2").arg(width).arg(height);
    entry.image = labelImage(QStringLiteral("%1x%2px").arg(width).arg(height), 13, QColor(230, 240, 255),
                             QColor(16, 30, 48, 200), false);
    return entry;
}

QImage projectorPlaceholderImage(int width, int height, double throwRatio)
{
    width = std::max(1, width);
    height = std::max(1, height);
    // Drawn at most 2048 px wide: enough for the view, cheap to upload.
    const double scale = std::min(1.0, 2048.0 / std::max(width, height));
    const int w = std::max(1, int(std::lround(width * scale)));
    const int h = std::max(1, int(std::lround(height * scale)));
    QImage image(w, h, QImage::Format_RGBA8888);
    // A light field, so that the picture reads as light and shadows in it as darker.
    image.fill(QColor(206, 211, 219));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = std::max(1.0, std::min(w, h) / 100.0);
    QPen framePen(QColor(52, 56, 64));
    framePen.setWidthF(unit);
    painter.setPen(framePen);
    painter.drawRect(QRectF(unit / 2, unit / 2, w - unit, h - unit));
    QPen crossPen(QColor(120, 126, 136));
    crossPen.setWidthF(unit * 0.5);
    painter.setPen(crossPen);
    painter.drawLine(QPointF(w / 2.0, 0), QPointF(w / 2.0, h));
    painter.drawLine(QPointF(0, h / 2.0), QPointF(w, h / 2.0));
    painter.drawEllipse(QPointF(w / 2.0, h / 2.0), std::min(w, h) * 0.3, std::min(w, h) * 0.3);
    QFont font = labelFont(int(std::lround(std::min(w, h) * 0.075)), true);
    painter.setFont(font);
    painter.setPen(QColor(28, 30, 34));
    const QString resolution = vg::scene::projectorPlaceholderResolutionText(width, height);
    const QString throwText = vg::scene::projectorThrowRatioText(throwRatio);
    const QFontMetrics metrics(font);
    painter.drawText(QRectF(0, h / 2.0 - metrics.height() * 1.6, w, metrics.height() * 1.2), Qt::AlignCenter, resolution);
    painter.drawText(QRectF(0, h / 2.0 + metrics.height() * 0.4, w, metrics.height() * 1.2), Qt::AlignCenter, throwText);
    painter.end();
    return image;
}

SceneTextAtlasPacker::SceneTextAtlasPacker(int size)
    : m_size(size)
{
    clear();
}

void SceneTextAtlasPacker::clear()
{
    m_image = QImage(m_size, m_size, QImage::Format_RGBA8888);
    m_image.fill(Qt::transparent);
    m_entries.clear();
    m_shelfX = m_shelfY = m_shelfHeight = 0;
    ++m_revision;
}

const DimensionTextAtlasEntry *SceneTextAtlasPacker::find(const QString &key) const
{
    auto it = m_entries.constFind(key);
    return it == m_entries.constEnd() ? nullptr : &it.value();
}

bool SceneTextAtlasPacker::place(DimensionTextAtlasEntry &entry)
{
    const int w = entry.image.width() + 2; // one clear texel around each label for filtering
    const int h = entry.image.height() + 2;
    if (w > m_size || h > m_size)
        return false;
    if (m_shelfX + w > m_size) {
        m_shelfY += m_shelfHeight;
        m_shelfX = 0;
        m_shelfHeight = 0;
    }
    if (m_shelfY + h > m_size)
        return false;
    entry.atlasRect = QRect(m_shelfX + 1, m_shelfY + 1, entry.image.width(), entry.image.height());
    QPainter painter(&m_image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(entry.atlasRect.topLeft(), entry.image);
    painter.end();
    m_shelfX += w;
    m_shelfHeight = std::max(m_shelfHeight, h);
    ++m_revision;
    return true;
}

const DimensionTextAtlasEntry *SceneTextAtlasPacker::ensure(const QString &key,
                                                            const std::function<DimensionTextAtlasEntry()> &make)
{
    if (const DimensionTextAtlasEntry *existing = find(key))
        return existing;
    DimensionTextAtlasEntry entry = make();
    if (!entry.isValid())
        return nullptr;
    entry.key = key;
    if (!place(entry)) {
        clear();
        if (!place(entry))
            return nullptr;
    }
    auto it = m_entries.insert(key, entry);
    return &it.value();
}
