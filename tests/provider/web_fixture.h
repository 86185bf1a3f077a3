#pragma once

#include "provider/classes/service_class.h"
#include "provider/data_folder.h"
#include "provider/management_namespace.h"
#include "provider/provider_error.h"
#include "provider/served_version.h"
#include "provider/server_account.h"
#include "provider/svn/repository_store.h"
#include "provider/web/web_process.h"
#include "support/port_holder.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <poll.h>
#include <unistd.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

using test::PortHolder;

class NoRows final : public RowSink
{
public:
    void AddInstance(const InstanceRow&) override {}
    void AddElement(const QString&, const InstanceRow&) override {}
};

/// A server whose folders have every sign in their names that means something to httpd, with a true httpd and the
/// stock client. Root's tests work as the account of the web service, as root's provider does.
class WebFixture : public testing::Test
{
protected:
    void SetUp() override
    {
        QFile::setPermissions(m_temporary.path(), QFile::Permissions(0x7755));
        m_account.emplace(DataPath());
        m_data.emplace(DataPath());
        // The class alone: the files of users and permissions are the tests' own.
        m_server = std::make_unique<ManagementNamespace>(u"Quenvolta"_s, ServedVersion().Table());
        m_server->Add(u"Quenvolta_Service"_s, std::make_shared<ServiceClass>(*m_data));
        ASSERT_TRUE(QDir(DataPath()).mkdir(u"scratch"_s));
        Call(u"SetNetworkOptions"_s, Network(false, m_port));
    }

    void TearDown() override
    {
        if (const auto process = WebProcess::Find(Folder())) {
            process->Signal(SIGTERM);
            EXPECT_TRUE(process->WaitForEnd(std::chrono::seconds(30)));
        }
        WebProcess::EndOrphans(Folder());
        m_account.reset();
    }

    QString DataPath() const { return m_temporary.path() + u"/da ta\"'%{x}\\#<>"_s; }
    WebFolder Folder() const { return WebFolder(DataPath()); }
    QString Scratch(const QString& name) const { return DataPath() + u"/scratch/"_s + name; }
    RepositoryStore Repositories() const { return RepositoryStore(DataPath() + u"/repositories"_s); }

    using Parameters = QList<std::pair<QString, Variant>>;
    static Parameters Network(bool secure, int port)
    {
        return {{u"UseSecureConnection"_s, secure},
                {u"Port"_s, port},
                {u"ListenIPAddressesArray"_s, QStringList{u"127.0.0.1"_s}}};
    }

    /// Calls a method of the service; its output.
    WbemObjectPtr Call(const QString& method, const Parameters& in = {})
    {
        CallContext context{m_server->Classes(), m_rows, {}, QUuid::createUuid()};
        auto shape = std::make_shared<ClassDefinition>();
        QList<Variant> values;
        for (const auto& [name, value] : in) {
            constexpr CimType kTypes[] = {CimType::String, CimType::Boolean, CimType::Sint32,     CimType::Uint32,
                                          CimType::String, CimType::Object,  CimType::StringArray};
            shape->properties.append({name, kTypes[value.index()], false});
            values.append(value);
        }
        return m_server->ExecMethod(kPath, method, std::make_shared<WbemObject>(shape, values), context);
    }

    /// The error of a call that must fail.
    ProviderError Refusal(const QString& method, const Parameters& in = {})
    {
        try {
            Call(method, in);
        } catch (const ProviderError& error) {
            EXPECT_FALSE(error.Description().isEmpty());
            return error;
        }
        ADD_FAILURE() << method.toStdString() << " did not fail";
        return ProviderError(S_OK, {});
    }

    Variant Property(const QString& name)
    {
        CallContext context{m_server->Classes(), m_rows, {}, {}};
        Variant value;
        EXPECT_EQ(m_server->GetObject(kPath, context)->Get(name, &value, nullptr), S_OK) << name.toStdString();
        return value;
    }
    std::uint32_t Number(const QString& name)
    {
        const Variant value = Property(name);
        const auto* number = std::get_if<std::uint32_t>(&value);
        return number ? *number : ~0U;
    }

    static bool Eventually(const std::function<bool()>& condition)
    {
        for (const QDeadlineTimer deadline(20'000); !deadline.hasExpired(); ::poll(nullptr, 0, 10)) {
            if (condition())
                return true;
        }
        return false;
    }

    static void Write(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
        file.write(content);
    }
    static QByteArray Read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Lets alice in (password "secret") with the given access to everything.
    void LetAliceIn(const QByteArray& access)
    {
        Write(Folder().Users(),
              "alice:{SHA}" + QCryptographicHash::hash("secret", QCryptographicHash::Sha1).toBase64() + '\n');
        Write(Folder().Permissions(), "[/]\nalice = " + access + '\n');
    }

    struct Outcome {
        bool succeeded = false;
        QString output;
    };
    static Outcome Run(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(60'000)) << program.toStdString();
        return {process.exitCode() == 0, QString::fromUtf8(process.readAll())};
    }
    Outcome Svn(const QStringList& arguments, const QString& password = u"secret"_s) const
    {
        return Run(u"svn"_s, QStringList{u"--non-interactive"_s, u"--no-auth-cache"_s, u"--config-dir"_s,
                                         Scratch(u"config"_s), u"--username"_s, u"alice"_s, u"--password"_s, password,
                                         u"--trust-server-cert-failures=unknown-ca,cn-mismatch"_s} +
                                 arguments);
    }
    QString Url(const QString& repository) const { return u"http://127.0.0.1:%1/svn/"_s.arg(m_port) + repository; }

    static constexpr auto kPath = "Quenvolta_Service.Name=\"QuenvoltaServer\""_L1;
    QTemporaryDir m_temporary;
    std::optional<ServerAccount> m_account;
    int m_port = PortHolder::Free();
    NoRows m_rows;
    std::optional<DataFolder> m_data;
    std::unique_ptr<ManagementNamespace> m_server;
};

} // namespace quenvolta
