#include "foundation/base64.h"
#include "foundation/file_time.h"
#include "foundation/guid.h"
#include "foundation/sid.h"
#include "foundation/simple_exception.h"
#include "foundation/system_account_directory.h"
#include "foundation/version.h"
#include "foundation/win32_exception.h"
#include "support/expect_failure.h"

#include <QRegularExpression>
#include <QSysInfo>

#include <limits>
#include <unistd.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ExpectCode;
using test::ExpectMessage;

namespace
{

constexpr HRESULT kInvalidSid = HResultFromWin32(ERROR_INVALID_SID);
constexpr HRESULT kInvalidData = HResultFromWin32(ERROR_INVALID_DATA);

TEST(VersionTest, ParsesDottedNumbers)
{
    EXPECT_EQ(ParseVersion(u"3.3.1"_s), MakeVersion(3, 3, 1));
    EXPECT_EQ(ParseVersion(u"3.4"_s), MakeVersion(3, 4));
    EXPECT_EQ(ParseVersion(u"2.7.0-beta"_s), MakeVersion(2, 7, 0));
    EXPECT_EQ(ParseVersion(u"..2...6."_s), MakeVersion(2, 6));
    EXPECT_EQ(ParseVersion(u"1.2.3.4"_s), MakeVersion(1, 2, 3, 4));
    EXPECT_EQ(ParseVersion({}), Version{});
    EXPECT_EQ(ParseVersion(u"x. +2x.-3"_s), MakeVersion(0, 2, -3));
    EXPECT_EQ(ParseVersion(u"99999999999999999999.1"_s), MakeVersion(std::numeric_limits<std::int32_t>::max(), 1));
    ExpectMessage<SimpleException>(u"Cannot parse version string '1.2.3.4.5'. Number of groups exceeds 4."_s,
                                   [] { ParseVersion(u"1.2.3.4.5"_s); });
}

TEST(VersionTest, ComparesNumbersNotTexts)
{
    EXPECT_TRUE(IsAtLeast(MakeVersion(3, 3, 1), MakeVersion(3, 3)));
    EXPECT_FALSE(IsAtLeast(MakeVersion(3, 3, 1), MakeVersion(3, 4)));
    EXPECT_TRUE(IsAtLeast(MakeVersion(3, 10), MakeVersion(3, 9)));
}

TEST(GuidTest, HasTheRegistryForm)
{
    const QString text = GuidToString(NewGuid());
    static const QRegularExpression kForm(u"^\\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\}$"_s);
    EXPECT_TRUE(kForm.match(text).hasMatch()) << text.toStdString();
    EXPECT_EQ(text.size(), 38);
    EXPECT_NE(NewGuid(), NewGuid());
}

TEST(SidTest, WritesAndReadsTheStandardText)
{
    for (const QString& text : {u"S-1-22-1-1000"_s, u"S-1-5-21-4294967295-0-1-500"_s, u"S-1-0x0001FFFFFFFF-7"_s,
                                u"S-1-5-1-2-3-4-5-6-7-8-9-10-11-12-13-14-15"_s})
        EXPECT_EQ(SidToString(StringToSid(text)), text);
    EXPECT_EQ(StringToSid(u"s-1-22-2-0"_s), (Sid{22, {2, 0}}));
    for (const QString& text :
         {QString(), u"S"_s, u"S-1"_s, u"S-1-22"_s, u"S-1-22-"_s, u"S-2-22-1"_s, u"S-1-22-1-"_s, u"S-1-22-+1"_s,
          u"S-1-22-4294967296"_s, u"S-1-22-01"_s, u"S-1-22- 1"_s, u"S-1-22-1x"_s, u"S-1-0x1-1"_s, u"X-1-22-1"_s,
          u"S-1-4294967296-1"_s, u"S-1-5-1-2-3-4-5-6-7-8-9-10-11-12-13-14-15-16"_s, u"S-1-22-\u0661"_s})
        ExpectCode(kInvalidSid, [&text] { StringToSid(text); });
    ExpectCode(kInvalidSid, [] { SidToString({22, {}}); });
    ExpectCode(kInvalidSid, [] { SidToString({std::uint64_t{1} << 48, {1}}); });
    ExpectMessage<Win32Exception>(u"Cannot parse SID string:\n"_s + Win32Exception(ERROR_INVALID_SID).GetMessage(),
                                  [] { StringToSid(u"%s"_s); });
}

TEST(AccountDirectoryTest, NamesTheSystemsAccounts)
{
    const SystemAccountDirectory directory;
    const QString host = QSysInfo::machineHostName();
    EXPECT_EQ(LookupAccountName(directory, {22, {1, 0}}, {}), (AccountName{u"root"_s, host}));
    EXPECT_EQ(LookupAccountName(directory, {22, {2, 0}}, host), (AccountName{u"root"_s, host}));
    const HRESULT nobody = HResultFromWin32(ERROR_NONE_MAPPED);
    ExpectCode(nobody, [&] { LookupAccountName(directory, {22, {1, 4'000'000'000}}, {}); });
    ExpectCode(nobody, [&] { LookupAccountName(directory, {22, {3, 0}}, {}); });
    ExpectCode(nobody, [&] { LookupAccountName(directory, {5, {1, 0}}, {}); });
    ExpectCode(nobody, [&] { LookupAccountName(directory, {22, {1}}, {}); });
    ExpectCode(RPC_S_SERVER_UNAVAILABLE, [&] { LookupAccountName(directory, {22, {1, 0}}, u"elsewhere.invalid"_s); });
}

TEST(Base64Test, DecodesTheFormsItIsAskedFor)
{
    const QByteArray bytes("\x00\xFF"
                           "certificate",
                           13);
    const QString plain = QString::fromLatin1(bytes.toBase64());
    const QString broken = plain.left(5) + u"\r\n \t"_s + plain.mid(5) + u'\n';
    const QString framed = u"Subject: x\r\n-----BEGIN CERTIFICATE-----\r\n"_s + broken +
                           u"-----END CERTIFICATE-----\r\n"_s + u"-----BEGIN KEY-----\n@@@\n-----END KEY-----"_s;
    EXPECT_EQ(DecodeBase64(broken, Base64Form::Plain), bytes);
    EXPECT_EQ(DecodeBase64(framed, Base64Form::Header), bytes);
    EXPECT_EQ(DecodeBase64(framed, Base64Form::RequestHeader), bytes);
    EXPECT_EQ(DecodeBase64(framed, Base64Form::Any), bytes);
    EXPECT_EQ(DecodeBase64(plain, Base64Form::Any), bytes);

    ExpectCode(kInvalidData, [&] { DecodeBase64(plain, Base64Form::Header); });
    ExpectCode(kInvalidData, [&] { DecodeBase64(framed, Base64Form::Plain); });
    ExpectCode(kInvalidData, [] { DecodeBase64(u"-----BEGIN X-----\nQUJD\n"_s, Base64Form::Any); });
    for (const QString& text : {QString(), u"QUI"_s, u"QUI*"_s, u"QUJ="_s, u"Q==="_s, u"QUI=QUI="_s, u"QUJ\u0100"_s})
        ExpectCode(kInvalidData, [&text] { DecodeBase64(text, Base64Form::Plain); });
    ExpectMessage<Win32Exception>(u"Cannot decode base64 data:\n"_s + Win32Exception(ERROR_INVALID_DATA).GetMessage(),
                                  [] { DecodeBase64(u"?"_s, Base64Form::Any); });
    ExpectCode(E_INVALIDARG, [] { DecodeBase64(u"QUJD"_s, Base64Form{4}); });
}

TEST(FileTimeTest, CountsFrom1601)
{
    EXPECT_EQ(FileTimeFromUnixMilliseconds(0), 116'444'736'000'000'000);
    EXPECT_GT(CurrentFileTime(), FileTimeFromUnixMilliseconds(1'700'000'000'000));
}

} // namespace

} // namespace quenvolta
