#include "chat/huddle/NativeHuddleTrack.h"
#include "chat/huddle/NativeHuddleVideo.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <memory>

// Frames handed over from another thread, and the tile that draws them.
class TestHuddleVideo : public QObject {
    Q_OBJECT

private slots:
    void framesFromAnotherThreadAreCoalesced()
    {
        NativeHuddleTrack track;
        QSignalSpy changed(&track, &NativeHuddleTrack::frameChanged);
        std::unique_ptr<QThread> streaming(QThread::create([slot = track.slot()] {
            for (int i = 1; i <= 200; ++i)
                slot->offer(QImage(i, 10, QImage::Format_RGB32));
        }));
        streaming->start();
        QVERIFY(streaming->wait(5000));
        QVERIFY(changed.wait(1000));
        QCoreApplication::processEvents();
        // Every frame counted, the newest kept, and far fewer updates than frames.
        QCOMPARE(track.frames(), 200);
        QCOMPARE(track.frameSize(), QSize(200, 10));
        QVERIFY(changed.size() < 50);
    }

    void aSlotOutlivesItsTrack()
    {
        std::shared_ptr<NativeHuddleTrack::Slot> slot;
        {
            NativeHuddleTrack track;
            slot = track.slot();
        }
        // A streaming thread still holding the slot posts to nobody.
        slot->offer(QImage(4, 4, QImage::Format_RGB32));
        QCoreApplication::processEvents();
        QCOMPARE(slot->frames, 1);
    }

    void tileFitsTheFrameInside()
    {
        NativeHuddleTrack track;
        QImage red(160, 90, QImage::Format_RGB32);
        red.fill(Qt::red);
        track.slot()->offer(red);
        NativeHuddleVideo tile;
        QSignalSpy showing(&tile, &NativeHuddleVideo::showingChanged);
        tile.setSize({ 200, 200 });
        tile.setTrack(&track);
        QCOMPARE(showing.size(), 1);
        QVERIFY(tile.showing());

        QImage drawn(200, 200, QImage::Format_ARGB32_Premultiplied);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        tile.paint(&painter);
        painter.end();
        // 16:9 in a square: bands above and below, the picture across the middle.
        QCOMPARE(drawn.pixelColor(100, 100), QColor(Qt::red));
        QCOMPARE(drawn.pixelColor(2, 100), QColor(Qt::red));
        QCOMPARE(drawn.pixelColor(100, 30).alpha(), 0);
        QCOMPARE(drawn.pixelColor(100, 170).alpha(), 0);
    }
};

QTEST_MAIN(TestHuddleVideo)
#include "tst_huddlevideo.moc"
