#include "screens/calls/NativeCallPlayer.h"

#include "screens/calls/CallBookRules.h"

#include <QAudioOutput>
#include <QDir>
#include <QMediaPlayer>
#include <QTemporaryFile>
#include <QUrl>

#include <cmath>

using namespace Qt::StringLiterals;

NativeCallPlayer::NativeCallPlayer(QObject *parent)
    : QObject(parent)
    , m_player(new QMediaPlayer(this))
    , m_output(new QAudioOutput(this))
{
    m_player->setAudioOutput(m_output);
    connect(m_player, &QMediaPlayer::mediaStatusChanged, this, &NativeCallPlayer::followStatus);
    connect(m_player, &QMediaPlayer::durationChanged, this, [this](qint64 ms) {
        if (m_duration == int(ms))
            return;
        m_duration = int(ms);
        Q_EMIT durationChanged();
    });
    connect(m_player, &QMediaPlayer::positionChanged, this, &NativeCallPlayer::setPosition);
    connect(m_player, &QMediaPlayer::playbackStateChanged, this, [this](QMediaPlayer::PlaybackState state) {
        const bool playing = state == QMediaPlayer::PlayingState;
        if (m_playing == playing)
            return;
        m_playing = playing;
        Q_EMIT stateChanged();
    });
    connect(m_player, &QMediaPlayer::errorOccurred, this,
        [this](QMediaPlayer::Error, const QString &text) { setError(u"The recording cannot be played: "_s + text); });
}

NativeCallPlayer::~NativeCallPlayer() = default;

const QList<double> &NativeCallPlayer::speeds()
{
    static const QList<double> all { 1.0, 1.5, 2.0 };
    return all;
}

QString NativeCallPlayer::positionLabel() const
{
    return CallBookRules::durationLabel(m_position / 1000);
}

QString NativeCallPlayer::durationLabel() const
{
    return CallBookRules::durationLabel((m_duration + 999) / 1000);
}

void NativeCallPlayer::setSpeed(double speed)
{
    double nearest = speeds().first();
    for (const double offered : speeds())
        if (std::abs(offered - speed) < std::abs(nearest - speed))
            nearest = offered;
    if (nearest == m_speed)
        return;
    m_speed = nearest;
    m_player->setPlaybackRate(m_speed);
    Q_EMIT speedChanged();
}

bool NativeCallPlayer::load(const QString &callId, const QByteArray &bytes)
{
    clear();
    auto file = std::make_unique<QTemporaryFile>(QDir::tempPath() + u"/pilo-tarn-recording-XXXXXX.wav"_s);
    if (!file->open() || file->write(bytes) != bytes.size() || !file->flush()) {
        setError(u"The recording could not be kept for playing: "_s + file->errorString());
        return false;
    }
    m_file = std::move(file);
    m_callId = callId;
    setError({});
    m_player->setSource(QUrl::fromLocalFile(m_file->fileName()));
    m_player->setPlaybackRate(m_speed);
    Q_EMIT sourceChanged();
    return true;
}

void NativeCallPlayer::clear()
{
    m_player->stop();
    m_player->setSource(QUrl());
    m_file.reset();
    const bool had = !m_callId.isEmpty();
    m_callId.clear();
    m_ready = false;
    m_duration = 0;
    setPosition(0);
    if (had) {
        Q_EMIT sourceChanged();
        Q_EMIT stateChanged();
        Q_EMIT durationChanged();
    }
}

void NativeCallPlayer::play()
{
    if (m_callId.isEmpty())
        return;
    if (m_duration > 0 && m_position >= m_duration)
        seek(0);
    m_player->play();
}

void NativeCallPlayer::pause()
{
    m_player->pause();
}

void NativeCallPlayer::toggle()
{
    m_playing ? pause() : play();
}

void NativeCallPlayer::seek(int ms)
{
    if (m_callId.isEmpty())
        return;
    const int to = std::clamp(ms, 0, std::max(m_duration, 0));
    setPosition(to);
    m_player->setPosition(to);
}

void NativeCallPlayer::followStatus()
{
    const QMediaPlayer::MediaStatus status = m_player->mediaStatus();
    const bool ready = status == QMediaPlayer::LoadedMedia || status == QMediaPlayer::BufferedMedia
        || status == QMediaPlayer::BufferingMedia || status == QMediaPlayer::EndOfMedia;
    if (status == QMediaPlayer::EndOfMedia)
        setPosition(m_duration);
    if (status == QMediaPlayer::InvalidMedia)
        setError(u"The recording cannot be played."_s);
    if (ready != m_ready) {
        m_ready = ready;
        Q_EMIT stateChanged();
    }
}

void NativeCallPlayer::setPosition(qint64 ms)
{
    if (m_position == int(ms))
        return;
    m_position = int(ms);
    Q_EMIT positionChanged();
}

void NativeCallPlayer::setError(const QString &text)
{
    if (m_error == text)
        return;
    m_error = text;
    Q_EMIT errorTextChanged();
}
