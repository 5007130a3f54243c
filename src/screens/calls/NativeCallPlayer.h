#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <memory>

class QAudioOutput;
class QMediaPlayer;
class QTemporaryFile;

// The player of one call recording at a time, over QMediaPlayer: play,
// pause, seek and a speed of 1×, 1.5× or 2×. The recording's bytes come
// from the service and are played from a private temporary file, which is
// removed when another recording is loaded or the player goes.
//
// `position` follows the media while it plays and moves at once on a seek,
// so a slider dragged by the person does not jump back while the media
// catches up. Playing from the end starts again from the beginning.
class NativeCallPlayer : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString callId READ callId NOTIFY sourceChanged)
    Q_PROPERTY(bool ready READ ready NOTIFY stateChanged)
    Q_PROPERTY(bool playing READ playing NOTIFY stateChanged)
    Q_PROPERTY(int position READ position NOTIFY positionChanged)
    Q_PROPERTY(int duration READ duration NOTIFY durationChanged)
    Q_PROPERTY(QString positionLabel READ positionLabel NOTIFY positionChanged)
    Q_PROPERTY(QString durationLabel READ durationLabel NOTIFY durationChanged)
    Q_PROPERTY(double speed READ speed WRITE setSpeed NOTIFY speedChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    // Sound goes to the desktop's default output. The media backend needs
    // one to load a recording at all; without a sound card it plays to none.
    explicit NativeCallPlayer(QObject *parent = nullptr);
    ~NativeCallPlayer() override;

    static const QList<double> &speeds();

    [[nodiscard]] QString callId() const { return m_callId; }
    [[nodiscard]] bool ready() const { return m_ready; }
    [[nodiscard]] bool playing() const { return m_playing; }
    [[nodiscard]] int position() const { return m_position; }
    [[nodiscard]] int duration() const { return m_duration; }
    [[nodiscard]] QString positionLabel() const;
    [[nodiscard]] QString durationLabel() const;
    [[nodiscard]] double speed() const { return m_speed; }
    // The nearest of `speeds`.
    void setSpeed(double speed);
    [[nodiscard]] QString errorText() const { return m_error; }

    // Loads a recording; `ready` once its length is known. False when it
    // could not be written to a temporary file (errorText says why).
    bool load(const QString &callId, const QByteArray &bytes);
    // Stops and forgets the recording.
    void clear();

    Q_INVOKABLE void play();
    Q_INVOKABLE void pause();
    Q_INVOKABLE void toggle();
    // Milliseconds (a recording is far shorter than int can count), kept
    // within the recording.
    Q_INVOKABLE void seek(int ms);

Q_SIGNALS:
    void sourceChanged();
    void stateChanged();
    void positionChanged();
    void durationChanged();
    void speedChanged();
    void errorTextChanged();

private:
    void followStatus();
    void setPosition(qint64 ms);
    void setError(const QString &text);

    QMediaPlayer *m_player;
    QAudioOutput *m_output;
    std::unique_ptr<QTemporaryFile> m_file;
    QString m_callId;
    bool m_ready = false;
    bool m_playing = false;
    int m_position = 0;
    int m_duration = 0;
    double m_speed = 1.0;
    QString m_error;
};
