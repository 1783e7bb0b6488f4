#include "video/VideoPlaceholder.h"

#include <QCoreApplication>
#include <QFont>
#include <QPainter>

QImage videoPlaceholderImage(const QString &title, const QString &detail)
{
    constexpr int kWidth = 640;
    constexpr int kHeight = 360;
    QImage image(kWidth, kHeight, QImage::Format_RGBA8888);
    image.fill(QColor(24, 26, 30));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setPen(QPen(QColor(200, 60, 50), 6));
    painter.drawRect(QRectF(3, 3, kWidth - 6, kHeight - 6));
    painter.fillRect(QRectF(0, 0, 48, 48), QColor(200, 60, 50));
    QFont titleFont;
    titleFont.setBold(true);
    titleFont.setPixelSize(64);
    painter.setFont(titleFont);
    painter.setPen(QColor(236, 238, 242));
    painter.drawText(QRectF(0, kHeight * 0.22, kWidth, kHeight * 0.34), Qt::AlignCenter, title);
    QFont detailFont;
    detailFont.setPixelSize(28);
    painter.setFont(detailFont);
    painter.setPen(QColor(170, 176, 186));
    painter.drawText(QRectF(0, kHeight * 0.58, kWidth, kHeight * 0.2), Qt::AlignCenter, detail);
    painter.end();
    return image;
}

QString ndiPlaceholderTitle()
{
    return QCoreApplication::translate("VideoPlaceholder", "NO NDI");
}

QString ndiPlaceholderDetail()
{
    return QCoreApplication::translate("VideoPlaceholder", "Select source or check input");
}

QString spoutPlaceholderTitle()
{
    return QCoreApplication::translate("VideoPlaceholder", "NO SPOUT");
}

QString spoutPlaceholderDetail()
{
    return QCoreApplication::translate("VideoPlaceholder", "Select sender or check input");
}
