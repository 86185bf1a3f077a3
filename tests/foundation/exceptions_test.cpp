#include "foundation/error_text.h"
#include "foundation/server_not_installed_exception.h"
#include "foundation/simple_exception.h"
#include "foundation/ssl_exception.h"
#include "foundation/win32_exception.h"
#include "foundation/wmi_client_exception.h"
#include "support/expect_failure.h"

#include <limits>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

TEST(FormatTest, FillsTextsAndNumbersAndNeverReadsAnArgumentAsAFormat)
{
    EXPECT_EQ(Format(u"100%% of '%s': %d, %u, 0x%8.8X", u"%s%n%d"_s, -3, 4U, 0xFEDCBA98U),
              u"100% of '%s%n%d': -3, 4, 0xFEDCBA98");
    EXPECT_EQ(Format(u"%d", std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
    const QString withNul = u"a"_s + QChar(u'\0') + u"b\u20AC"_s;
    EXPECT_EQ(Format(u"%s", withNul), withNul);
}

TEST(FormatTest, ChecksTheFormatAgainstItsArguments)
{
    using detail::FormatKind;
    constexpr FormatKind kText = FormatKind::Text;
    constexpr FormatKind kNumber = FormatKind::Signed;
    static_assert(detail::FormatFits(u"'%s'", &kText, 1));
    static_assert(!detail::FormatFits(u"'%s'", &kNumber, 1));
    static_assert(!detail::FormatFits(u"'%d'", &kText, 1));
    static_assert(!detail::FormatFits(u"'%s'", &kText, 0));
    static_assert(!detail::FormatFits(u"none", &kText, 1));
    static_assert(!detail::FormatFits(u"at the end %", &kText, 0));
}

TEST(ErrorTextTest, ComesFromTheMessageTable)
{
    EXPECT_EQ(ErrorTextFromHResult(WBEM_E_ACCESS_DENIED), u"WMI access denied.");
    EXPECT_EQ(ErrorTextFromHResult(RPC_E_ACCESS_DENIED), u"RPC access denied.");
    EXPECT_EQ(ErrorTextFromHResult(MakeHResult(0x8FFF1234)), u"HRESULT 0x8FFF1234");
    EXPECT_TRUE(ErrorTextFromHResult(RPC_S_SERVER_UNAVAILABLE).endsWith(u" (0x800706BA)"_s));
    // Every code that the channel and the management layer can raise has words of its own.
    for (const HRESULT code : {RPC_E_DISCONNECTED,
                               RPC_E_INVALID_DATA,
                               RPC_E_VERSION_MISMATCH,
                               RPC_S_SERVER_UNAVAILABLE,
                               RPC_S_SEC_PKG_ERROR,
                               HR_INVALID_COMPUTER_NAME,
                               WBEM_E_FAILED,
                               WBEM_E_NOT_FOUND,
                               WBEM_E_TYPE_MISMATCH,
                               WBEM_E_NOT_SUPPORTED,
                               WBEM_E_INVALID_NAMESPACE,
                               WBEM_E_INVALID_CLASS,
                               WBEM_E_PROVIDER_LOAD_FAILURE,
                               WBEM_E_INVALID_METHOD,
                               WBEM_E_INVALID_METHOD_PARAMETERS,
                               WBEM_E_CALL_CANCELLED,
                               WBEM_E_INVALID_OBJECT_PATH,
                               WBEM_E_ALREADY_EXISTS,
                               E_OUTOFMEMORY,
                               E_INVALIDARG,
                               E_FAIL,
                               DISP_E_OVERFLOW,
                               DISP_E_TYPEMISMATCH,
                               HResultFromWin32(ERROR_INVALID_DATA),
                               HResultFromWin32(ERROR_NONE_MAPPED),
                               HResultFromWin32(ERROR_INVALID_SID)}) {
        const QString text = ErrorTextFromHResult(code);
        EXPECT_FALSE(text.startsWith(u"HRESULT"_s)) << text.toStdString();
        EXPECT_FALSE(text.contains(u'\n')) << text.toStdString();
    }
}

TEST(ComExceptionTest, JoinsContextAndDetail)
{
    EXPECT_EQ(ComException(WBEM_E_ACCESS_DENIED).GetMessage(), u"WMI access denied.");
    const ComException property(E_ACCESSDENIED, nullptr, u"Cannot get property '%s'", u"Name"_s);
    EXPECT_EQ(property.GetMessage(), u"Cannot get property 'Name':\nAccess is denied. (0x80070005)");
    EXPECT_EQ(ComException(E_FAIL, CreateErrorInfo(u"The peer's words"_s)).GetMessage(), u"The peer's words");
    EXPECT_EQ(ComException(MakeHResult(0x8FFF1234), CreateErrorInfo({}), u"Context").GetMessage(),
              u"Context:\nHRESULT 0x8FFF1234");
    EXPECT_NO_THROW(CheckResult(S_FALSE));
    test::ExpectCode(E_FAIL, [] { CheckResult(E_FAIL); });
}

TEST(ExceptionKindsTest, HaveTheirTexts)
{
    EXPECT_EQ(SimpleException(u"Line %d of '%s'", 3, u"f"_s).GetMessage(), u"Line 3 of 'f'");
    EXPECT_EQ(SimpleException::FromText(u"50 % done %s"_s).GetMessage(), u"50 % done %s");
    EXPECT_EQ(ServerNotInstalledException({}).GetMessage(), u"Quenvolta Server is not installed on the local computer");
    EXPECT_EQ(ServerNotInstalledException(u"srv%s1"_s).GetMessage(),
              u"Quenvolta Server is not installed on the computer 'srv%s1'");
    EXPECT_EQ(Win32Exception(5).Code(), E_ACCESSDENIED);
    EXPECT_EQ(Win32Exception(0).Code(), 0);
    EXPECT_EQ(Win32Exception(0x12345, u"x").Code(), MakeHResult(0x80072345));
    EXPECT_EQ(Win32Exception(E_FAIL).Code(), E_FAIL);
}

TEST(ExceptionKindsTest, KeepTheirKindWhenClonedAndThrownAgain)
{
    const WMIClientException thrown(E_FAIL, CreateErrorInfo(u"other words"_s), {u"D"_s, u"S"_s, u"T"_s, 3});
    const std::unique_ptr<Exception> kept = static_cast<const Exception&>(thrown).Clone();
    const auto again = test::FailureOf<WMIClientException>([&kept] { kept->Throw(); });
    ASSERT_TRUE(again);
    EXPECT_EQ(again->GetMessage(), u"D");
    EXPECT_EQ(again->Summary(), u"S");
    EXPECT_EQ(again->Details(), u"T");
    EXPECT_EQ(again->ProbableReason(), 3);
    EXPECT_EQ(again->Code(), E_FAIL);
    EXPECT_EQ(again->ErrorInformation(), thrown.ErrorInformation());
    test::ExpectMessage<Win32Exception>(u"c:\nAccess is denied. (0x80070005)"_s,
                                        [] { Win32Exception(5, u"c").Clone()->Throw(); });
    test::ExpectMessage<SSLException>(u"m"_s, [] { SSLException(u"m"_s).Clone()->Throw(); });
}

} // namespace

} // namespace quenvolta
