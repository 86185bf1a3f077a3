#include "platform/wbem/class_table.h"
#include "platform/wbem/error_info.h"
#include "platform/wbem/wbem_context.h"
#include "platform/wbem/wbem_date_time.h"
#include "platform/wbem/wbem_object.h"

#include <gtest/gtest.h>
#include <limits>
#include <thread>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

QStringList ParametersOf(const ClassTable& table, const char* className, const char* method)
{
    const ClassDefinitionPtr definition = table.Find(QString::fromLatin1(className));
    const MethodDefinition* const found = definition ? definition->FindMethod(QString::fromLatin1(method)) : nullptr;
    QStringList names;
    if (found && found->in)
        WbemObject(found->in).GetNames(&names);
    return names;
}

} // namespace

TEST(WbemObjects, NumbersBecomeTheTypeOfTheirPropertyOrAreRefused)
{
    struct Case {
        CimType type;
        Variant value;
        HRESULT code;
        Variant coerced = {};
    };
    const auto null = Variant{};
    const auto object = std::make_shared<WbemObject>(std::make_shared<ClassDefinition>());
    const Case kCases[]{
        {CimType::Sint32, std::uint32_t{5}, S_OK, std::int32_t{5}},
        {CimType::Sint32, std::numeric_limits<std::uint32_t>::max(), WBEM_E_VALUE_OUT_OF_RANGE},
        {CimType::Sint32, std::uint32_t{0x80000000}, WBEM_E_VALUE_OUT_OF_RANGE},
        {CimType::Sint32, std::numeric_limits<std::int32_t>::min(), S_OK, std::numeric_limits<std::int32_t>::min()},
        {CimType::Uint32, std::int32_t{5}, S_OK, std::uint32_t{5}},
        {CimType::Uint32, std::int32_t{-1}, WBEM_E_VALUE_OUT_OF_RANGE},
        {CimType::Uint32, true, WBEM_E_TYPE_MISMATCH},
        {CimType::Uint32, u"5"_s, WBEM_E_TYPE_MISMATCH},
        {CimType::Boolean, std::int32_t{1}, WBEM_E_TYPE_MISMATCH},
        {CimType::Boolean, null, S_OK, null},
        {CimType::Datetime, u"any text"_s, S_OK, u"any text"_s},
        {CimType::String, QStringList{u"a"_s}, WBEM_E_TYPE_MISMATCH},
        {CimType::Object, WbemObjectPtr{}, S_OK, null},
        {CimType::ObjectArray, QList<WbemObjectPtr>{object}, S_OK, QList<WbemObjectPtr>{object}},
        {CimType::ObjectArray, QList<WbemObjectPtr>{object, nullptr}, WBEM_E_TYPE_MISMATCH},
        {CimType::StringArray, QStringList{}, S_OK, QStringList{}},
    };
    for (const Case& each : kCases) {
        Variant coerced = u"untouched"_s;
        EXPECT_EQ(CoerceVariant(each.type, each.value, &coerced), each.code);
        EXPECT_EQ(coerced, Succeeded(each.code) ? each.coerced : Variant{u"untouched"_s});
    }
}

TEST(WbemObjects, AClassGivesSignaturesAndInstances)
{
    const ClassTable table(u"quenvolta"_s, {3, 3});
    const WbemClassDefinitionObject group(table.Find(u"QUENVOLTA_GROUP"_s));
    WbemObjectPtr in;
    WbemObjectPtr out;
    ASSERT_EQ(group.GetMethod(u"getmembers"_s, &in, &out), S_OK);
    EXPECT_FALSE(in);
    WbemObjectPtr parameters;
    ASSERT_EQ(out->SpawnInstance(&parameters), S_OK);
    EXPECT_EQ(parameters->Put(u"members"_s, QList<WbemObjectPtr>{}), S_OK);
    EXPECT_EQ(parameters->Put(u"Other"_s, Variant{}), WBEM_E_NOT_FOUND);
    EXPECT_EQ(group.GetMethod(u"NoSuchMethod"_s, &in, &out), WBEM_E_NOT_FOUND);
    EXPECT_EQ(parameters->GetMethod(u"GetMembers"_s, &in, &out), WBEM_E_INVALID_OPERATION);
    Variant name;
    CimType type{};
    EXPECT_EQ(group.Get(u"__class"_s, &name, &type), S_OK);
    EXPECT_EQ(name, Variant{u"Quenvolta_Group"_s});
    EXPECT_EQ(type, CimType::String);
}

TEST(WbemObjects, AServersClassesFollowItsVersion)
{
    const ClassTable oldest(u"Quenvolta"_s, {2, 0});
    const ClassTable middle(u"Quenvolta"_s, {2, 8});
    const ClassTable newest(u"Quenvolta"_s, {3, 2});
    EXPECT_TRUE(oldest.Find(u"__SystemClass"_s));
    EXPECT_FALSE(oldest.Find(u"Quenvolta_Activity"_s));
    EXPECT_FALSE(middle.Find(u"Quenvolta_QdfsService"_s));
    EXPECT_TRUE(newest.Find(u"Quenvolta_QdfsService"_s));
    EXPECT_FALSE(oldest.Find(u"Quenvolta_Repository"_s)->FindMethod(u"Rename"));
    EXPECT_TRUE(middle.Find(u"Quenvolta_Repository"_s)->FindMethod(u"Rename"));
    EXPECT_EQ(oldest.Find(u"Quenvolta_Repository"_s)->IndexOf(u"Type"), -1);
    EXPECT_EQ(newest.Find(u"Quenvolta_Repository"_s)->Keys(), QStringList{u"Name"_s});

    const ClassTable before(u"Quenvolta"_s, {3, 0});
    EXPECT_EQ(ParametersOf(before, "Quenvolta_Repository", "ImportRepository"),
              (QStringList{u"Name"_s, u"ImportPath"_s}));
    EXPECT_EQ(ParametersOf(newest, "Quenvolta_Repository", "ImportRepository"),
              (QStringList{u"Name"_s, u"ImportPath"_s, u"ImportMode"_s}));
    EXPECT_EQ(ParametersOf(oldest, "Quenvolta_Service", "SetAuthenticationOptions"),
              (QStringList{u"AuthType"_s, u"UseUPNFormat"_s}));

    const ClassTable standard(u"cimv2"_s, {3, 3});
    EXPECT_TRUE(standard.Find(u"Win32_Group"_s));
    EXPECT_FALSE(standard.Find(u"Quenvolta_Group"_s));
    EXPECT_TRUE(ClassTable(u"Other"_s, {3, 3}).IsEmpty());
}

TEST(WbemObjects, ADateTimeIsReadFieldByField)
{
    SWbemDateTime time;
    ASSERT_EQ(time.PutValue(u"20240229235959.999999-090"_s), S_OK);
    EXPECT_EQ(time.Year(), 2024);
    EXPECT_EQ(time.Month(), 2);
    EXPECT_EQ(time.Day(), 29);
    EXPECT_EQ(time.Hours(), 23);
    EXPECT_EQ(time.Minutes(), 59);
    EXPECT_EQ(time.Seconds(), 59);
    EXPECT_EQ(time.Microseconds(), 999999);
    EXPECT_EQ(time.UTC(), -90);
    for (const QString& bad :
         {u""_s, u"20230229000000.000000+000"_s, u"20231301000000.000000+000"_s, u"20230101240000.000000+000"_s,
          u"20230101006000.000000+000"_s, u"20230101000060.000000+000"_s, u"20230101000000.000000"_s,
          u"20230101000000.00000+000"_s, u"20230101000000.000000+000\n"_s, u" 0230101000000.000000+000"_s,
          u"\u0662\u0660230101000000.000000+000"_s, u"16001231000000.000000+000"_s, u"20230100000000.000000+000"_s}) {
        EXPECT_EQ(time.PutValue(bad), WBEM_E_INVALID_PARAMETER) << bad.toStdString();
        EXPECT_EQ(time.Year(), 2024);
    }
    EXPECT_EQ(time.PutValue(u"16010101000000.000000+720"_s), S_OK);
    EXPECT_EQ(time.UTC(), 720);
}

TEST(WbemObjects, ErrorInformationIsHandedOutOnceToItsThread)
{
    SetErrorInfo(CreateErrorInfo(u"it broke"_s));
    ErrorInfoPtr info;
    std::thread([] {
        ErrorInfoPtr other;
        EXPECT_EQ(GetErrorInfo(&other), S_FALSE);
        SetErrorInfo(CreateErrorInfo(u"elsewhere"_s));
    }).join();
    ASSERT_EQ(GetErrorInfo(&info), S_OK);
    QString text;
    EXPECT_EQ(info->GetDescription(&text), S_OK);
    EXPECT_EQ(text, u"it broke"_s);
    EXPECT_EQ(GetErrorInfo(&info), S_FALSE);
    EXPECT_FALSE(info);

    const ClassTable table(u"Quenvolta"_s, {3, 3});
    const auto error = std::make_shared<WbemErrorObject>(table.Find(u"Quenvolta_ExtendedError"_s));
    EXPECT_EQ(error->GetDescription(&text), S_OK);
    EXPECT_EQ(text, u""_s);
    error->Put(u"Description"_s, u"extended"_s);
    error->GetDescription(&text);
    EXPECT_EQ(text, u"extended"_s);
}

TEST(WbemObjects, AContextKeepsOneValueAName)
{
    const WbemContextPtr context = CreateWbemContext();
    EXPECT_EQ(context->SetValue(u"ActivityId"_s, 0, u"1"_s), S_OK);
    EXPECT_EQ(context->SetValue(u"B"_s, 0, true), S_OK);
    EXPECT_EQ(context->SetValue(u"activityid"_s, 0, u"2"_s), S_OK);
    EXPECT_EQ(context->SetValue(u"B"_s, 1, false), WBEM_E_INVALID_PARAMETER);
    Variant value;
    EXPECT_EQ(context->GetValue(u"ACTIVITYID"_s, 0, &value), S_OK);
    EXPECT_EQ(value, Variant{u"2"_s});
    EXPECT_EQ(context->GetValue(u"C"_s, 0, &value), WBEM_E_NOT_FOUND);
    QStringList names;
    context->GetNames(0, &names);
    EXPECT_EQ(names, (QStringList{u"ActivityId"_s, u"B"_s}));
}

} // namespace quenvolta
