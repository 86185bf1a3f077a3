#include "snapin/snap_in_stream.h"
#include "snapin_test.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::LoadedSnapIn;

namespace
{

QByteArray SavedBy(CMMCStandaloneData& snapIn)
{
    QByteArray stream;
    EXPECT_EQ(snapIn.Save(&stream, true), S_OK);
    std::uint64_t most = 0;
    EXPECT_EQ(snapIn.GetSizeMax(&most), S_OK);
    EXPECT_EQ(most, static_cast<std::uint64_t>(stream.size()));
    return stream;
}

} // namespace

TEST(PersistenceTest, TheComputerComesBack)
{
    LoadedSnapIn first;
    CMMCStandaloneData& snapIn = first.Load();
    EXPECT_EQ(snapIn.IsDirty(), S_FALSE);
    EXPECT_EQ(SavedBy(snapIn), QByteArray::fromHex("0100000000000000")); // the local computer
    snapIn.Model().SetComputer(u"SRV01"_s, true);
    EXPECT_EQ(snapIn.IsDirty(), S_OK);
    const QByteArray stream = SavedBy(snapIn);
    EXPECT_EQ(stream, QByteArray::fromHex("01000000"
                                          "0c000000"
                                          "530052005600300031000000"));
    EXPECT_EQ(snapIn.IsDirty(), S_FALSE);

    LoadedSnapIn second;
    EXPECT_EQ(second.Load().Load(stream), S_OK);
    EXPECT_EQ(second.data->Model().ComputerName(), u"SRV01");
    EXPECT_EQ(second.data->IsDirty(), S_FALSE);

    LoadedSnapIn named(u"3.3.1"_s, {u"manager"_s, u"/computer=SRV02"_s});
    EXPECT_EQ(named.Load().Load(QByteArray("not read")), S_OK); // the command line wins
    EXPECT_EQ(named.data->Model().ComputerName(), u"SRV02");
}

TEST(PersistenceTest, BrokenStreamsLeaveTheLocalComputer)
{
    for (const auto& [what, hex] : std::initializer_list<std::pair<const char*, const char*>>{
             {"empty", ""},
             {"cut in the header", "010000000c0000"},
             {"version 0", "0000000000000000"},
             {"version 2", "0200000000000000"},
             {"a length of 1", "010000000100000053"},
             {"an odd length", "0100000003000000530000"},
             {"a length of more than is there", "010000000c00000053000000"},
             {"a length of less than is there", "01000000020000000000530000"},
             {"a length of 0 with a name behind it", "010000000000000053000000"},
             {"a length of 4 GiB", "01000000ffffffff53000000"},
             {"no terminator", "010000000400000053005200"},
             {"a zero in the middle", "01000000080000005300000052000000"},
             {"half a surrogate pair", "010000000400000000d80000"},
         }) {
        LoadedSnapIn loaded;
        EXPECT_TRUE(Failed(loaded.Load().Load(QByteArray::fromHex(hex)))) << what;
        EXPECT_EQ(loaded.data->Model().ComputerName(), QString()) << what;
        EXPECT_EQ(loaded.messages.errors.size(), 1) << what;
    }
    EXPECT_EQ(ReadSnapInStream(WriteSnapInStream(QString(512 * 1024 - 1, u'x'))).size(), 512 * 1024 - 1);
    EXPECT_THROW(ReadSnapInStream(WriteSnapInStream(QString(512 * 1024, u'x'))), Exception); // more than 1 MiB
}

} // namespace quenvolta
