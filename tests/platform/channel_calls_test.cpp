#include "channel_fixture.h"
#include "platform/wbem/class_definition.h"
#include "platform/wbem/proxy_blanket.h"
#include "platform/wbem/wbem_context.h"
#include "platform/wbem/wbem_object.h"

#include <QUuid>

#include <stdexcept>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

class ChannelCalls : public ChannelTest
{
protected:
    static WbemObjectPtr CountInput(std::uint32_t count)
    {
        auto shape = std::make_shared<ClassDefinition>();
        shape->name = kParametersClass.toString();
        shape->properties = {{u"Count"_s, CimType::Uint32, false}};
        return std::make_shared<WbemObject>(shape, QList<Variant>{count});
    }
};

} // namespace

TEST_F(ChannelCalls, ObjectsClassesAndErrorsComeAcross)
{
    const WbemServicesPtr services = Connect(u"server"_s);
    WbemObjectPtr object;
    ASSERT_EQ(services->GetObject(u"Thing.Name=\"\u00E4\""_s, 0, nullptr, &object), S_OK);
    EXPECT_EQ(Text(object, "Path"), u"Thing.Name=\"\u00E4\""_s);
    EXPECT_EQ(Text(object, "Namespace"), u"Quenvolta"_s);

    ASSERT_EQ(services->GetObject(u"Quenvolta_Group"_s, 0, nullptr, &object), S_OK);
    WbemObjectPtr in;
    ASSERT_EQ(object->GetMethod(u"SetMembers"_s, &in, nullptr), S_OK);
    QStringList names;
    in->GetNames(&names);
    EXPECT_EQ(names, QStringList{u"Members"_s});

    EXPECT_EQ(services->GetObject(u"missing"_s, 0, nullptr, &object), WBEM_E_NOT_FOUND);
    EXPECT_EQ(ErrorText(), "There is no such thing");
    EXPECT_EQ(services->GetObject(u"refused"_s, 0, nullptr, &object), WBEM_E_FAILED);
    ErrorInfoPtr info;
    ASSERT_EQ(GetErrorInfo(&info), S_OK);
    const auto error = std::dynamic_pointer_cast<IWbemClassObject>(info);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->InheritsFrom(u"Quenvolta_ExtendedError"_s), S_OK);
    EXPECT_EQ(Text(error, "Description"), u"The server says no"_s);
}

TEST_F(ChannelCalls, EveryRequestHasItsOwnIdentityUnlessOneIsGiven)
{
    const WbemServicesPtr services = Connect(u"server"_s);
    const auto identity = std::dynamic_pointer_cast<IRequestIdentity>(services);
    ASSERT_TRUE(identity);
    const QUuid given = QUuid::createUuid();
    const WbemContextPtr context = CreateWbemContext();
    context->SetValue(u"ActivityId"_s, 0, u"{42}"_s);
    WbemObjectPtr first;
    WbemObjectPtr second;
    WbemObjectPtr third;
    identity->SetNextRequestId(given);
    ASSERT_EQ(services->GetObject(u"x"_s, 0, context, &first), S_OK);
    ASSERT_EQ(services->GetObject(u"x"_s, 0, nullptr, &second), S_OK);
    ASSERT_EQ(services->GetObject(u"x"_s, 0, nullptr, &third), S_OK);
    EXPECT_EQ(Text(first, "Request"), given.toString());
    EXPECT_EQ(Text(first, "ActivityId"), u"{42}"_s);
    EXPECT_NE(Text(second, "Request"), given.toString());
    EXPECT_NE(Text(second, "Request"), Text(third, "Request"));
    EXPECT_FALSE(QUuid(Text(third, "Request")).isNull());
}

TEST_F(ChannelCalls, LongListsKeepTheirOrderAndShareOneClass)
{
    const WbemServicesPtr services = Connect(u"server"_s);
    EnumWbemClassObjectPtr list;
    ASSERT_EQ(services->CreateInstanceEnum(u"3000"_s, 0, nullptr, &list), S_OK);
    QList<WbemObjectPtr> objects;
    EXPECT_EQ(list->Next(WBEM_INFINITE, 1, &objects), S_OK);
    EXPECT_EQ(list->Next(WBEM_INFINITE, 10000, &objects), S_FALSE);
    ASSERT_EQ(objects.size(), 3000);
    EXPECT_EQ(Text(objects[2999], "Name"), u"item 2999"_s);
    const auto definition = [](const WbemObjectPtr& object) {
        return std::dynamic_pointer_cast<WbemObject>(object)->Definition();
    };
    EXPECT_EQ(definition(objects.first()), definition(objects.last()));
    EXPECT_EQ(list->Next(0, 1, &objects), S_FALSE);

    // A failure behind the last object doesn't take the objects away.
    ASSERT_EQ(services->CreateInstanceEnum(u"5!"_s, 0, nullptr, &list), S_OK);
    objects.clear();
    EXPECT_EQ(list->Next(WBEM_INFINITE, 10, &objects), WBEM_E_FAILED);
    EXPECT_EQ(objects.size(), 5);
}

TEST_F(ChannelCalls, ArrayParametersThatCameInRowsStandInTheOutput)
{
    const WbemServicesPtr services = Connect(u"server"_s);
    WbemObjectPtr out;
    WbemCallResultPtr result;
    ASSERT_EQ(services->ExecMethod(u"Thing"_s, u"List"_s, 0, nullptr, CountInput(1500), &out, &result), S_OK);
    Variant items;
    ASSERT_EQ(out->Get(u"Items"_s, &items), S_OK);
    const auto& objects = std::get<QList<WbemObjectPtr>>(items);
    ASSERT_EQ(objects.size(), 1501);
    EXPECT_EQ(Text(objects[1499], "Name"), u"item 1499"_s);
    EXPECT_EQ(objects[1500]->InheritsFrom(u"Last"_s), S_OK);
    HRESULT status = E_FAIL;
    EXPECT_EQ(result->GetCallStatus(0, &status), S_OK);
    EXPECT_EQ(status, S_OK);
}

TEST_F(ChannelCalls, ElementsOfAMethodAreVisitedWhileTheyCome)
{
    const WbemServicesPtr services = Connect(u"server"_s);
    const auto elements = std::dynamic_pointer_cast<IMethodElements>(services);
    ASSERT_TRUE(elements);
    QStringList names;
    QList<WbemObjectPtr> kept;
    const auto visit = [&](const WbemObjectPtr& object) {
        names.append(Text(object, "Name"));
        if (names.size() % 100 == 0)
            kept.append(object);
    };
    EXPECT_EQ(elements->VisitElements(u"Thing"_s, u"List"_s, CountInput(1500), u"Items"_s, visit), S_OK);
    ASSERT_EQ(names.size(), 1501);
    EXPECT_EQ(names[1234], u"item 1234"_s);
    EXPECT_EQ(names[1500], u"end"_s);
    ASSERT_EQ(kept.size(), 15);
    for (int i = 0; i < 15; ++i) // what was kept stays as it was
        EXPECT_EQ(Text(kept[i], "Name"), u"item %1"_s.arg(100 * i + 99));

    // A visitor that gives up gives up the call, and the channel goes on.
    EXPECT_THROW(elements->VisitElements(u"Thing"_s, u"List"_s, CountInput(1500), u"Items"_s,
                                         [](const WbemObjectPtr&) { throw std::runtime_error("enough"); }),
                 std::runtime_error);
    names.clear();
    EXPECT_EQ(elements->VisitElements(u"Thing"_s, u"List"_s, nullptr, u"Items"_s, visit), S_OK);
    EXPECT_TRUE(names.isEmpty());
}

TEST_F(ChannelCalls, AnEnumerationThatIsDroppedEndsAndTheChannelGoesOn)
{
    const WbemServicesPtr services = Connect(u"server"_s);
    EnumWbemClassObjectPtr list;
    ASSERT_EQ(services->CreateInstanceEnum(u"Endless"_s, 0, nullptr, &list), S_OK);
    QList<WbemObjectPtr> objects;
    EXPECT_EQ(list->Next(WBEM_INFINITE, 5000, &objects), S_OK);
    list.reset();
    WbemObjectPtr object;
    EXPECT_EQ(services->GetObject(u"x"_s, 0, nullptr, &object), S_OK);
}

TEST_F(ChannelCalls, APendingCallIsPolledWhileOthersAreAnswered)
{
    const WbemServicesPtr services = Connect(u"answers-in-reverse"_s);
    WbemCallResultPtr result;
    ASSERT_EQ(services->ExecMethod(u"Thing"_s, u"List"_s, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, CountInput(2), nullptr,
                                   &result),
              S_OK);
    HRESULT status = E_FAIL;
    EXPECT_EQ(result->GetCallStatus(0, &status), WBEM_S_TIMEDOUT);
    WbemObjectPtr out;
    EXPECT_EQ(result->GetResultObject(20, &out), WBEM_S_TIMEDOUT);
    WbemObjectPtr object;
    ASSERT_EQ(services->GetObject(u"x"_s, 0, nullptr, &object), S_OK);
    EXPECT_EQ(result->GetCallStatus(WBEM_INFINITE, &status), S_OK);
    EXPECT_EQ(status, S_OK);
    ASSERT_EQ(result->GetResultObject(0, &out), S_OK);
    Variant value;
    out->Get(u"ReturnValue"_s, &value);
    EXPECT_EQ(value, Variant{std::uint32_t{7}});
}

TEST_F(ChannelCalls, NamespacesOfOneComputerShareAChannelWhileItLives)
{
    WbemServicesPtr first = Connect(u"server"_s);
    const pid_t pid = PeerPid();
    WbemServicesPtr second = ConnectTo(u"."_s, nullptr, u"CIMV2"_s);
    EXPECT_EQ(PeerPid(), pid);
    HRESULT code = S_OK;
    EXPECT_FALSE(ConnectTo(u"."_s, &code, u"Missing"_s));
    EXPECT_EQ(code, WBEM_E_INVALID_NAMESPACE);
    first.reset();
    WbemObjectPtr object;
    ASSERT_EQ(second->GetObject(u"x"_s, 0, nullptr, &object), S_OK);
    EXPECT_EQ(Text(object, "Namespace"), u"CIMV2"_s);

    // A dead one is replaced, whether its end was noticed by a call or not.
    ::kill(pid, SIGKILL);
    EXPECT_EQ(second->GetObject(u"x"_s, 0, nullptr, &object), RPC_E_DISCONNECTED);
    EXPECT_EQ(second->GetObject(u"x"_s, 0, nullptr, &object), RPC_E_DISCONNECTED);
    first = ConnectTo(u"."_s);
    EXPECT_NE(PeerPid(), pid);
    ::kill(PeerPid(), SIGKILL);
    second = ConnectTo(u"."_s);
    EXPECT_EQ(second->GetObject(u"x"_s, 0, nullptr, &object), S_OK);
}

TEST_F(ChannelCalls, WhatCannotBeAskedIsRefusedAndTheChannelGoesOn)
{
    const WbemServicesPtr services = Connect(u"server"_s);
    WbemObjectPtr object;
    EnumWbemClassObjectPtr list;
    EXPECT_EQ(services->GetObject(u"x"_s, 1, nullptr, &object), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(services->CreateInstanceEnum(u"1"_s, 1, nullptr, &list), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(services->ExecMethod(u"x"_s, u"m"_s, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, nullptr, nullptr, nullptr),
              WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(services->GetObject(QString(17 * 1024 * 1024, u'x'), 0, nullptr, &object), WBEM_E_INVALID_PARAMETER);
    EXPECT_NE(ErrorText(), "");
    EXPECT_EQ(services->GetObject(QString(QChar(0xD800)), 0, nullptr, &object), WBEM_E_INVALID_PARAMETER);
    // Near the bound it goes through, both ways.
    const QString large(8 * 1024 * 1024, u'x');
    ASSERT_EQ(services->GetObject(large, 0, nullptr, &object), S_OK);
    EXPECT_EQ(Text(object, "Path"), large);

    WbemServicesPtr other;
    const WbemLocatorPtr locator = pool->CreateLocator();
    for (const QString& path : {u"\\\\.\\Quenvolta"_s, u"\\\\.\\root\\"_s, u"root\\Quenvolta"_s, u""_s}) {
        EXPECT_EQ(locator->ConnectServer(path, {}, {}, {}, 0, {}, nullptr, &other), WBEM_E_INVALID_NAMESPACE)
            << path.toStdString();
    }
    EXPECT_EQ(locator->ConnectServer(u"\\\\.\\ROOT\\quenvolta"_s, {}, {}, {}, 0, {}, nullptr, &other), S_OK);
    ProxyBlanket blanket;
    EXPECT_EQ(CoQueryProxyBlanket(other, &blanket), S_OK);
    blanket.impersonationLevel = RPC_C_IMP_LEVEL_DELEGATE;
    EXPECT_EQ(CoSetProxyBlanket(other, blanket), S_OK);
    CoQueryProxyBlanket(other, &blanket);
    EXPECT_EQ(blanket.impersonationLevel, RPC_C_IMP_LEVEL_DELEGATE);
}

} // namespace quenvolta
