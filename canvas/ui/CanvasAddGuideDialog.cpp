#include "canvas/ui/CanvasAddGuideDialog.h"

#include "guide/ui/GuideTab.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr QSize kPreview(192, 120);

QIcon previewIcon(const QImage &image)
{
    QPixmap pixmap(kPreview);
    pixmap.fill(QColor(32, 34, 38));
    QPainter painter(&pixmap);
    if (image.isNull()) {
        painter.setPen(QColor(200, 200, 200));
        painter.drawText(pixmap.rect(), Qt::AlignCenter, CanvasAddGuideDialog::tr("No preview"));
    } else {
        const QImage scaled = image.scaled(kPreview, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        painter.drawImage((kPreview.width() - scaled.width()) / 2, (kPreview.height() - scaled.height()) / 2, scaled);
    }
    painter.end();
    return QIcon(pixmap);
}

} // namespace

CanvasAddGuideDialog::CanvasAddGuideDialog(const QList<CanvasGuideTabSource> &sources, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Add Guide"));
    auto *layout = new QVBoxLayout(this);
    m_list = new QListWidget(this);
    m_list->setIconSize(kPreview);
    m_list->setObjectName(QStringLiteral("vantreoCanvasAddGuideList"));
    for (int i = 0; i < sources.size(); ++i) {
        const QImage image = sources[i].tab ? sources[i].tab->guideImage() : QImage();
        auto *item = new QListWidgetItem(previewIcon(image), sources[i].name, m_list);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
        item->setData(Qt::UserRole, i);
        item->setData(Qt::UserRole + 1, sources[i].sourceId);
    }
    layout->addWidget(m_list);
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *all = buttons->addButton(tr("Select All"), QDialogButtonBox::ActionRole);
    QPushButton *add = buttons->addButton(tr("Add Selected"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Cancel);
    layout->addWidget(buttons);
    connect(all, &QPushButton::clicked, this, [this] {
        for (int i = 0; i < m_list->count(); ++i)
            m_list->item(i)->setCheckState(Qt::Checked);
    });
    connect(add, &QPushButton::clicked, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // A double click adds that one guide.
    connect(m_list, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem *item) {
        item->setCheckState(Qt::Checked);
        accept();
    });
    resize(460, 520);
}

QList<int> CanvasAddGuideDialog::chosen() const
{
    QList<int> out;
    for (int i = 0; i < m_list->count(); ++i) {
        if (m_list->item(i)->checkState() == Qt::Checked)
            out.append(m_list->item(i)->data(Qt::UserRole).toInt());
    }
    return out;
}
