#include "platform/channel/frame.h"
#include "platform/channel/frame_reader.h"
#include "platform/channel/protocol.h"

#include <QList>

#include <gtest/gtest.h>

namespace quenvolta
{

namespace
{

const QByteArray kFirst(300, 'a');
const QByteArray kSecond("b");

QByteArray Stream(const QByteArray& noise)
{
    return noise + kMagicLine.toByteArray() + MakeFrame(kFirst) + MakeFrame(kSecond);
}

} // namespace

TEST(ChannelFrameReader, FramesDoNotDependOnHowTheyArrive)
{
    for (const QByteArray& noise :
         {QByteArray(), QByteArray("Hi\n"), QByteArray("QUENVOLTA-CHANNE QUENVOLTA-CHANNEL\r\n")}) {
        for (const qsizetype step : {1, 2, 7, 100, 100000}) {
            FrameReader reader(kMaxNoise);
            QList<QByteArray> frames;
            const QByteArray stream = Stream(noise);
            for (qsizetype at = 0; at < stream.size(); at += step) {
                reader.Append(QByteArrayView(stream).sliced(at, std::min(step, stream.size() - at)));
                while (const auto frame = reader.Next())
                    frames.append(frame->toByteArray());
            }
            EXPECT_EQ(frames, (QList<QByteArray>{kFirst, kSecond}));
            EXPECT_EQ(reader.Noise(), noise);
            EXPECT_FALSE(reader.Fault());
        }
    }
}

TEST(ChannelFrameReader, NoiseHasAnEnd)
{
    FrameReader exact(10);
    exact.Append(Stream(QByteArray(10, 'n')));
    EXPECT_TRUE(exact.Next());
    EXPECT_EQ(exact.Noise().size(), 10);

    FrameReader more(10);
    more.Append(Stream(QByteArray(11, 'n')));
    EXPECT_FALSE(more.Next());
    EXPECT_EQ(more.Fault(), ChannelText::NoMagicLine);
    EXPECT_EQ(more.Noise(), QByteArray(10, 'n'));

    FrameReader endless(10);
    qsizetype taken = 0;
    for (; !endless.Fault() && taken < 1000; ++taken) {
        endless.Append("n");
        EXPECT_FALSE(endless.Next());
    }
    EXPECT_EQ(taken, 10 + kMagicLine.size());
}

TEST(ChannelFrameReader, AnImpossibleLengthIsSeenBeforeTheFrame)
{
    for (const char* const length : {"00000000", "01000001", "ffffffff"}) {
        FrameReader reader(0);
        reader.Append(kMagicLine);
        reader.Append(QByteArray::fromHex(length));
        EXPECT_FALSE(reader.Next());
        EXPECT_EQ(reader.Fault(), ChannelText::BadFrameLength) << length;
    }
    FrameReader longest(0);
    longest.Append(kMagicLine);
    longest.Append(MakeFrame(QByteArray(kMaxFrameSize, 'x')));
    const auto frame = longest.Next();
    EXPECT_EQ(frame ? frame->size() : 0, kMaxFrameSize);
    EXPECT_TRUE(MakeFrame(QByteArray(kMaxFrameSize + 1, 'x')).isEmpty());
}

} // namespace quenvolta
