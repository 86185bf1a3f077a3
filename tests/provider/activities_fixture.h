#pragma once

#include "foundation/guid.h"
#include "foundation/registry_accessor.h"
#include "platform/channel/channel_pool.h"
#include "platform/wbem/error_info.h"
#include "platform/wbem/wbem_class_object.h"
#include "platform/wbem/wbem_context.h"
#include "provider/data_folder.h"
#include "support/dump_file.h"
#include "svn_fixture.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSet>

#include <csignal>
#include <poll.h>
#include <unistd.h>

namespace quenvolta
{

/// A true provider process on a folder of repositories, spoken to through a channel.
class ActivityTest : public SvnFixture
{
protected:
    using Parameters = QList<std::pair<QString, Variant>>;

    void SetUp() override
    {
        SvnFixture::SetUp();
        DataFolder data(m_data);
        RegistryAccessor(data.Settings(), RegistryAccessor::kServerKey.toString()).SetRepositoriesRoot(m_root);
        Connect();
    }

    static QString ProviderProgram() { return QCoreApplication::applicationDirPath() + u"/quenvolta-provider"_s; }

    /// Ends the provider, as a console that closes.
    void Disconnect()
    {
        m_services.reset();
        m_pool.reset();
    }

    /// Starts a provider, for the repositories as they are.
    void Connect()
    {
        Disconnect();
        ChannelOptions options;
        options.localProgram = ProviderProgram();
        options.localArguments = {u"--data"_s, m_data};
        m_pool = std::make_shared<ChannelPool>(options);
        ASSERT_EQ(m_pool->CreateLocator()->ConnectServer(u"\\\\.\\root\\Quenvolta"_s, {}, {}, {}, 0, {}, nullptr,
                                                         &m_services),
                  S_OK);
    }

    WbemObjectPtr Input(const QString& className, const QString& method, const Parameters& parameters) const
    {
        WbemObjectPtr definition;
        WbemObjectPtr signature;
        WbemObjectPtr in;
        EXPECT_EQ(m_services->GetObject(className, 0, nullptr, &definition), S_OK);
        EXPECT_EQ(definition->GetMethod(method, &signature, nullptr), S_OK);
        EXPECT_EQ(signature->SpawnInstance(&in), S_OK);
        for (const auto& [name, value] : parameters)
            EXPECT_EQ(in->Put(name, value), S_OK);
        return in;
    }

    /// Calls a static method; its code.
    HRESULT Call(const QString& className, const QString& method, const Parameters& parameters,
                 WbemObjectPtr* out = nullptr)
    {
        SetErrorInfo(nullptr);
        return m_services->ExecMethod(className, method, 0, nullptr, Input(className, method, parameters), out,
                                      nullptr);
    }

    HRESULT Cancel(const QString& id) { return Call(u"Quenvolta_Activity"_s, u"Cancel"_s, {{u"Id"_s, id}}); }

    /// Starts an import; `request` makes it the repetition of another one.
    WbemCallResultPtr StartImport(const QString& name, const QString& path, int mode, const QString& id = {},
                                  const QUuid& request = QUuid::createUuid())
    {
        const WbemContextPtr context = CreateWbemContext();
        EXPECT_EQ(context->SetValue(u"ActivityId"_s, 0, id.isEmpty() ? NewGuid().toString() : id), S_OK);
        Parameters parameters{{u"Name"_s, name}, {u"ImportPath"_s, path}};
        if (mode != 0)
            parameters.append({u"ImportMode"_s, mode});
        const WbemObjectPtr in = Input(m_repositories, u"ImportRepository"_s, parameters);
        std::dynamic_pointer_cast<IRequestIdentity>(m_services)->SetNextRequestId(request);
        WbemCallResultPtr result;
        EXPECT_EQ(m_services->ExecMethod(m_repositories, u"ImportRepository"_s, WBEM_FLAG_RETURN_IMMEDIATELY, context,
                                         in, nullptr, &result),
                  S_OK);
        return result;
    }

    /// Waits for the end of a call; its code.
    static HRESULT EndOf(const WbemCallResultPtr& call)
    {
        SetErrorInfo(nullptr);
        HRESULT status = S_OK;
        const HRESULT code = call->GetCallStatus(kLongestWaitMs, &status);
        return code == S_OK ? status : code;
    }

    HRESULT Import(const QString& name, const QString& path, int mode) { return EndOf(StartImport(name, path, mode)); }

    /// A text of the last failure's extended error.
    static QString ErrorText(const QString& property = u"Description"_s)
    {
        ErrorInfoPtr info;
        GetErrorInfo(&info);
        const auto error = std::dynamic_pointer_cast<IWbemClassObject>(info);
        Variant value;
        EXPECT_TRUE(error && error->Get(property, &value, nullptr) == S_OK);
        return std::holds_alternative<QString>(value) ? std::get<QString>(value) : QString();
    }

    template <typename Condition>
    static bool WaitFor(Condition condition)
    {
        QElapsedTimer waiting;
        waiting.start();
        while (!condition() && waiting.elapsed() < kLongestWaitMs)
            ::poll(nullptr, 0, 1);
        return condition();
    }

    /// The processes that `parent` has started and not yet taken note of the end of.
    static QList<pid_t> ChildrenOf(pid_t parent)
    {
        QList<pid_t> children;
        for (const QString& name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
            QFile stat(u"/proc/"_s + name + u"/stat"_s);
            if (!name.front().isDigit() || !stat.open(QIODevice::ReadOnly))
                continue;
            const QByteArray line = stat.readAll();
            const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
            if (fields.value(1).toInt() == parent)
                children.append(name.toInt());
        }
        return children;
    }

    static bool IsGone(pid_t process)
    {
        QFile stat(u"/proc/"_s + QString::number(process) + u"/stat"_s);
        return !stat.open(QIODevice::ReadOnly) || stat.readAll().contains(") Z ");
    }

    static pid_t Provider() { return ChildrenOf(::getpid()).value(0); }

    /// Waits until the import that was just started is in the middle of its work; its process.
    pid_t JobInTheMiddle() const
    {
        EXPECT_TRUE(WaitFor([this] {
            return HiddenNames().size() == 1 &&
                   QFile::exists(m_root + u'/' + HiddenNames().value(0) + u"/repository/db/revs/0/20"_s);
        }));
        return ChildrenOf(Provider()).value(0);
    }

    /// A dump file of so many revisions of one file.
    QString WriteDump(const QString& name, int revisions) const
    {
        const QString path = m_outside + u'/' + name;
        Write(path, test::DumpOf(revisions));
        return path;
    }

    static constexpr int kLongestWaitMs = 60'000;

    const QString m_repositories = u"Quenvolta_Repository"_s;
    QString m_data = m_temporary.path() + u"/data"_s;
    std::shared_ptr<ChannelPool> m_pool;
    WbemServicesPtr m_services;
};

} // namespace quenvolta
