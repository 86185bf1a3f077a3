#include "foundation/simple_exception.h"
#include "foundation/win32_exception.h"
#include "platform/wbem/wbem_object.h"
#include "support/expect_failure.h"
#include "wmi/server_date_time.h"
#include "wmi/wmi_class.h"

#include <limits>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ExpectCode;
using test::ExpectMessage;

namespace
{

constexpr std::uint32_t kLargestUnsigned = std::numeric_limits<std::uint32_t>::max();

ClassDefinitionPtr SampleClass()
{
    auto definition = std::make_shared<ClassDefinition>();
    definition->name = u"Sample"_s;
    definition->ancestors = {u"Base"_s};
    definition->properties = {{u"Text"_s, CimType::String, true},    {u"Flag"_s, CimType::Boolean, false},
                              {u"Number"_s, CimType::Uint32, false}, {u"Signed"_s, CimType::Sint32, false},
                              {u"Time"_s, CimType::Datetime, false}, {u"Texts"_s, CimType::StringArray, false},
                              {u"Object"_s, CimType::Object, false}, {u"Objects"_s, CimType::ObjectArray, false}};
    definition->methods = {{u"Run"_s, true, nullptr, nullptr}};
    return definition;
}

WMIObject With(const QString& name, const Variant& value)
{
    auto handle = std::make_shared<WbemObject>(SampleClass());
    EXPECT_EQ(handle->Put(name, value), S_OK);
    return WMIObject(handle);
}

TEST(WMIObjectTest, ReadsBackWhatWasPut)
{
    WMIObject object(std::make_shared<WbemObject>(SampleClass()));
    object.PutString(u"Text"_s, u"text"_s);
    object.PutBool(u"Flag"_s, true);
    object.PutInt32(u"Number"_s, 7);
    object.PutInt32(u"Signed"_s, -7);
    object.PutStringArray(u"Texts"_s, {u"a"_s, u"b"_s});
    object.PutObject(u"Object"_s, With(u"Text"_s, u"inner"_s));
    object.PutObjectArray(u"Objects"_s, {With(u"Text"_s, u"1"_s), With(u"Text"_s, u"2"_s)});
    EXPECT_EQ(object.GetString(u"Text"_s), u"text");
    EXPECT_TRUE(object.GetBool(u"Flag"_s));
    EXPECT_EQ(object.GetUInt32(u"Number"_s), 7U);
    EXPECT_EQ(object.GetOptionalInt32(u"Signed"_s), -7);
    EXPECT_EQ(object.GetStringArray(u"Texts"_s), (QStringList{u"a"_s, u"b"_s}));
    EXPECT_EQ(object.GetObject(u"Object"_s).GetString(u"Text"_s), u"inner");
    EXPECT_EQ(object.GetObjectArray(u"Objects"_s).value(1).GetString(u"Text"_s), u"2");
    EXPECT_TRUE(object.InheritsFrom(u"Base"_s));
    EXPECT_FALSE(object.InheritsFrom(u"Other"_s));
    EXPECT_EQ(object.GetClassName(), u"Sample");
}

TEST(WMIObjectTest, TellsNullApartFromOtherTypes)
{
    const WMIObject empty(std::make_shared<WbemObject>(SampleClass()));
    const QString notFound = ComException(WBEM_E_NOT_FOUND).GetMessage();
    EXPECT_TRUE(empty.IsNull(u"Text"_s));
    ExpectMessage<ComException>(notFound, [&] { empty.GetString(u"Text"_s); });
    ExpectMessage<ComException>(notFound, [&] { empty.GetStringArray(u"Texts"_s); });
    ExpectMessage<ComException>(u"Cannot get property 'Flag':\n"_s + notFound, [&] { empty.GetBool(u"Flag"_s); });
    ExpectMessage<ComException>(u"Cannot get property 'Number':\n"_s + notFound, [&] { empty.GetUInt32(u"Number"_s); });
    EXPECT_EQ(empty.GetOptionalInt32(u"Signed"_s), std::nullopt);
    ExpectMessage<ComException>(u"Cannot get property 'None%s':\n"_s + notFound, [&] { empty.IsNull(u"None%s"_s); });
    ExpectCode(DISP_E_TYPEMISMATCH, [&] { empty.GetObject(u"Object"_s); });

    const WMIObject object = With(u"Number"_s, 1U);
    const QString mismatch = ComException(WBEM_E_TYPE_MISMATCH).GetMessage();
    ExpectMessage<ComException>(mismatch, [&] { object.GetString(u"Number"_s); });
    ExpectCode(WBEM_E_TYPE_MISMATCH, [&] { object.GetObjectArray(u"Number"_s); });
    ExpectCode(DISP_E_TYPEMISMATCH, [&] { object.GetObject(u"Number"_s); });

    WMIObject target = empty;
    ExpectMessage<ComException>(u"Cannot set property 'Text':\n"_s + mismatch,
                                [&] { target.PutBool(u"Text"_s, true); });
    ExpectMessage<ComException>(u"Cannot set property 'None':\n"_s + notFound, [&] { target.PutInt32(u"None"_s, 1); });
    ExpectCode(WBEM_E_VALUE_OUT_OF_RANGE, [&] { target.PutInt32(u"Number"_s, -1); });
    ExpectCode(E_POINTER, [] { WMIObject().GetString(u"Text"_s); });
}

TEST(WMIObjectTest, ConvertsAsThePlatformDoes)
{
    EXPECT_TRUE(With(u"Number"_s, 2U).GetBool(u"Number"_s));
    EXPECT_FALSE(With(u"Signed"_s, 0).GetBool(u"Signed"_s));
    EXPECT_TRUE(With(u"Text"_s, u"True"_s).GetBool(u"Text"_s));
    EXPECT_FALSE(With(u"Text"_s, u"0"_s).GetBool(u"Text"_s));
    EXPECT_EQ(With(u"Number"_s, kLargestUnsigned).GetUInt32(u"Number"_s), kLargestUnsigned);
    EXPECT_EQ(With(u"Text"_s, u" 4294967295 "_s).GetUInt32(u"Text"_s), kLargestUnsigned);
    EXPECT_EQ(With(u"Flag"_s, true).GetOptionalInt32(u"Flag"_s), -1);
    EXPECT_EQ(With(u"Flag"_s, true).GetUInt32(u"Flag"_s), kLargestUnsigned);
    ExpectCode(DISP_E_OVERFLOW, [] { With(u"Signed"_s, -1).GetUInt32(u"Signed"_s); });
    ExpectCode(DISP_E_OVERFLOW, [] { With(u"Number"_s, 0x80000000U).GetOptionalInt32(u"Number"_s); });
    ExpectCode(DISP_E_OVERFLOW, [] { With(u"Text"_s, u"4294967296"_s).GetUInt32(u"Text"_s); });
    for (const QString& text : {u"x"_s, u""_s, u"nan"_s, u"inf"_s})
        ExpectCode(DISP_E_TYPEMISMATCH, [&text] { With(u"Text"_s, text).GetUInt32(u"Text"_s); });
    ExpectCode(DISP_E_TYPEMISMATCH, [] { With(u"Texts"_s, QStringList{u"1"_s}).GetBool(u"Texts"_s); });
}

TEST(WMIClassTest, NamesTheMethodWithoutASignature)
{
    const WMIClass definition(std::make_shared<WbemClassDefinitionObject>(SampleClass()));
    EXPECT_TRUE(definition.SpawnInstance().IsNull(u"Text"_s));
    ExpectMessage<ComException>(u"Cannot get signature for WMI method 'Sample.None':\n"_s +
                                    ComException(WBEM_E_NOT_FOUND).GetMessage(),
                                [&definition] { definition.GetMethodParameters(u"None"_s); });
    ExpectCode(WBEM_E_INVALID_METHOD_PARAMETERS, [&definition] { definition.GetMethodParameters(u"Run"_s); });
}

TEST(ServerDateTimeTest, BecomesUtc)
{
    const FileTime nine = FileTimeFromUnixMilliseconds(1'433'149'200'000); // 2015-06-01 09:00:00 UTC
    const auto read = [](const QString& text) { return With(u"Time"_s, text).GetDateTime(u"Time"_s); };
    EXPECT_EQ(read(u"20150601120000.000000+180"_s), nine);
    EXPECT_EQ(read(u"20150601033000.000000-330"_s), nine);
    EXPECT_EQ(read(u"20150601090000.999999+000"_s), nine + 999 * kFileTimePerMillisecond);
    EXPECT_EQ(read(u"16010101000000.000000+000"_s), 0);
    ExpectCode(WBEM_E_INVALID_PARAMETER, [&read] { read(u"20150631120000.000000+180"_s); });
    ExpectCode(WBEM_E_NOT_FOUND, [] { WMIObject(std::make_shared<WbemObject>(SampleClass())).GetDateTime(u"Time"_s); });
    ExpectMessage<Win32Exception>(u"Cannot convert datetime:\n"_s +
                                      Win32Exception(ERROR_INVALID_PARAMETER).GetMessage(),
                                  [] { ToFileTime({.year = 2015, .month = 13}); });
    ExpectCode(E_INVALIDARG, [] { ToFileTime({.year = 1600}); });
}

TEST(ServerDateTimeTest, IsShownInTheLocalZone)
{
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "UTC-3");
    tzset();
    const FileTime nine = FileTimeFromUnixMilliseconds(1'433'149'200'000);
    EXPECT_EQ(ToLocalDateTime(nine).toString(Qt::ISODate), u"2015-06-01T12:00:00");
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
    tzset();
    ExpectCode(E_INVALIDARG, [] { ToLocalDateTime(-1); });
    ExpectCode(E_INVALIDARG, [] { ToLocalDateTime(std::numeric_limits<FileTime>::max()); });
    const FileTime year12000 = ToFileTime({.year = 12000});
    ExpectMessage<SimpleException>(u"Cannot convert datetime."_s, [=] { ToLocalDateTime(year12000); });
}

} // namespace

} // namespace quenvolta
