#include "scene/ui/SceneVideoSourceControls.h"

#include "video/MovieTexture.h"
#include "video/NdiSender.h"
#include "video/ObjectVideoSource.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>

SceneVideoSourceControls::SceneVideoSourceControls(bool projectorImage, StatusProvider status, QWidget *parent)
    : QWidget(parent)
    , m_projector(projectorImage)
    , m_status(std::move(status))
{
    auto *form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    m_decode = new QComboBox(this);
    m_decode->setObjectName(QStringLiteral("movieDecodeMode"));
    m_decode->addItem(MovieTexture::decodeModeText(MovieDecodeMode::Cpu), false);
    m_decode->addItem(MovieTexture::decodeModeText(MovieDecodeMode::Gpu), true);
    form->addRow(tr("Movie decoding"), m_decode);
    m_state = new QLabel(this);
    m_state->setObjectName(QStringLiteral("videoSourceState"));
    m_state->setWordWrap(true);
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form->addRow(tr("Source state"), m_state);
    m_ndi = new QLineEdit(this);
    m_ndi->setObjectName(QStringLiteral("ndiSource"));
    m_ndi->setPlaceholderText(tr("NDI source name or URL"));
    form->addRow(tr("NDI source"), m_ndi);
    m_spout = new QLineEdit(this);
    m_spout->setObjectName(QStringLiteral("spoutSender"));
    m_spout->setPlaceholderText(tr("Spout sender name"));
    form->addRow(tr("Spout sender"), m_spout);

    connect(m_decode, &QComboBox::currentIndexChanged, this, [this] {
        const bool hardware = m_decode->currentData().toBool();
        Q_EMIT edited([hardware](GuideObject &o) { o.texture_movie_hwaccel = hardware; });
    });
    connect(m_ndi, &QLineEdit::editingFinished, this, [this] {
        const QString text = m_ndi->text().trimmed();
        const bool projector = m_projector;
        Q_EMIT edited([text, projector](GuideObject &o) {
            (projector ? o.projector_ndi_source : o.texture_ndi_source) = text;
        });
    });
    connect(m_spout, &QLineEdit::editingFinished, this, [this] {
        const QString text = m_spout->text().trimmed();
        const bool projector = m_projector;
        Q_EMIT edited([text, projector](GuideObject &o) {
            (projector ? o.projector_spout_sender : o.texture_spout_sender) = text;
        });
    });
    // The decoder changes state on its own thread; the text follows it while shown.
    m_stateTimer = new QTimer(this);
    m_stateTimer->setInterval(250);
    connect(m_stateTimer, &QTimer::timeout, this, &SceneVideoSourceControls::refreshState);
    m_stateTimer->start();
}

void SceneVideoSourceControls::setObject(const GuideObject &object)
{
    m_object = object;
    const QSignalBlocker blockDecode(m_decode);
    m_decode->setCurrentIndex(object.texture_movie_hwaccel ? 1 : 0);
    const QString ndi = m_projector ? object.projector_ndi_source : object.texture_ndi_source;
    const QString spout = m_projector ? object.projector_spout_sender : object.texture_spout_sender;
    if (m_ndi->text() != ndi) {
        const QSignalBlocker block(m_ndi);
        m_ndi->setText(ndi);
    }
    if (m_spout->text() != spout) {
        const QSignalBlocker block(m_spout);
        m_spout->setText(spout);
    }
    const ObjectVideoSource source = objectVideoSource(object, m_projector);
    m_decode->setEnabled(source.kind == ObjectVideoSource::Movie);
    refreshState();
}

QString SceneVideoSourceControls::stateText() const
{
    return m_state->text();
}

void SceneVideoSourceControls::refreshState()
{
    QString text = m_status ? m_status(m_object, m_projector) : QString();
    if (text.isEmpty())
        text = MovieTexture::stateText(MovieState::NoMovie);
    if (m_state->text() != text)
        m_state->setText(text);
}

SceneViewOutputControls::SceneViewOutputControls(QWidget *parent)
    : QWidget(parent)
{
    auto *form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    m_mode = new QComboBox(this);
    m_mode->setObjectName(QStringLiteral("viewOutputMode"));
    m_mode->addItems({tr("None"), tr("Spout"), tr("NDI")});
    form->addRow(tr("View output"), m_mode);
    m_name = new QLineEdit(this);
    m_name->setObjectName(QStringLiteral("viewOutputName"));
    form->addRow(tr("Output name"), m_name);
    connect(m_mode, &QComboBox::currentIndexChanged, this, [this](int mode) {
        Q_EMIT edited([mode](GuideObject &o) { o.projector_view_output_mode = mode; });
    });
    connect(m_name, &QLineEdit::editingFinished, this, [this] {
        const QString name = m_name->text().trimmed();
        Q_EMIT edited([name](GuideObject &o) { o.projector_view_output_name = name; });
    });
}

void SceneViewOutputControls::setObject(const GuideObject &object)
{
    const QSignalBlocker blockMode(m_mode);
    m_mode->setCurrentIndex(std::clamp(object.projector_view_output_mode, 0, 2));
    m_name->setPlaceholderText(NdiSender::viewSenderName(object.isProjector(), {}));
    if (m_name->text() != object.projector_view_output_name) {
        const QSignalBlocker block(m_name);
        m_name->setText(object.projector_view_output_name);
    }
}
