#pragma once

#include "platform/channel/channel_pool.h"
#include "platform/wbem/error_info.h"
#include "platform/wbem/wbem_class_object.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/types.h>

namespace quenvolta
{

/// Channels to the program that misbehaves on demand.
class ChannelTest : public ::testing::Test
{
protected:
    ~ChannelTest() override
    {
        pool.reset();
        EXPECT_TRUE(PeerIsGone());
    }

    QString PeerProgram() const { return QCoreApplication::applicationDirPath() + QStringLiteral("/misbehaving_peer"); }

    /// Connects to a new peer of this mode. A null handle's code is in `code`.
    WbemServicesPtr Connect(const QString& mode, HRESULT* code = nullptr)
    {
        options.localProgram = PeerProgram();
        options.localArguments = QStringList{mode};
        return ConnectTo(QStringLiteral("."), code);
    }

    /// Connects with the options as they are.
    WbemServicesPtr ConnectTo(const QString& computer, HRESULT* code = nullptr,
                              const QString& name = QStringLiteral("Quenvolta"))
    {
        options.localEnvironment.insert(QStringLiteral("PEER_PID_FILE"), Path("pid"));
        options.sshEnvironment = options.localEnvironment;
        if (!pool)
            pool = std::make_shared<ChannelPool>(options);
        WbemServicesPtr services;
        const HRESULT result =
            pool->CreateLocator()->ConnectServer(QStringLiteral("\\\\") + computer + QStringLiteral("\\root\\") + name,
                                                 {}, {}, {}, 0, {}, nullptr, &services);
        EXPECT_EQ(Succeeded(result), services != nullptr);
        if (code)
            *code = result;
        else
            EXPECT_EQ(result, S_OK);
        return services;
    }

    QString Path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }

    QByteArray Contents(const char* name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    pid_t PeerPid() const { return static_cast<pid_t>(Contents("pid").toInt()); }

    /// True when the peer that was started last is no process any more, not even one that waits to be reaped.
    bool PeerIsGone() const
    {
        const pid_t pid = PeerPid();
        return pid == 0 || (::kill(pid, 0) == -1 && errno == ESRCH);
    }

    static std::string ErrorText()
    {
        ErrorInfoPtr info;
        QString text;
        if (GetErrorInfo(&info) == S_OK)
            info->GetDescription(&text);
        return text.toStdString();
    }

    static QString Text(const WbemObjectPtr& object, const char* property)
    {
        Variant value;
        EXPECT_EQ(object->Get(QString::fromLatin1(property), &value), S_OK);
        const QString* const text = std::get_if<QString>(&value);
        return text ? *text : QString();
    }

    QTemporaryDir folder;
    ChannelOptions options;
    std::shared_ptr<ChannelPool> pool;
};

} // namespace quenvolta
