#pragma once

#include "foundation/preferences.h"
#include "model/model.h"
#include "platform/channel/channel_pool.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdlib>
#include <filesystem>
#include <memory>

namespace quenvolta::bench
{

/// Preferences that remember nothing.
class NoPreferences final : public IcPreferences
{
public:
    QStringList GetRecentServers() const override { return {}; }
    void AddRecentServer(const QString&, FileTime) override {}
    QStringList GetRecentQdfsServers() const override { return {}; }
    void AddRecentQdfsServer(const QString&) override {}
    bool IsUpdateCheckDisabled() const override { return true; }
    void SetUpdateCheckDisabled(bool) override {}
};

/// A server's data in a temporary folder, the provider beside this program, and a model on it.
class BenchServer
{
public:
    BenchServer()
    {
        QDir().mkpath(Repositories());
        ChannelOptions options;
        options.localProgram = QCoreApplication::applicationDirPath() + QStringLiteral("/quenvolta-provider");
        options.localArguments = {QStringLiteral("--data"), m_folder.filePath(QStringLiteral("data"))};
        m_pool = std::make_shared<ChannelPool>(options);
        m_model = std::make_unique<CModel>(Factory(), m_preferences);
    }

    QString Repositories() const { return m_folder.filePath(QStringLiteral("data/repositories")); }
    QString Scratch(const QString& name) const { return m_folder.filePath(name); }
    CModel& Model() { return *m_model; }
    WbemLocatorFactory Factory()
    {
        return [pool = m_pool](WbemLocatorPtr* locator) {
            *locator = pool->CreateLocator();
            return S_OK;
        };
    }

    static void Run(const QString& program, const QStringList& arguments)
    {
        if (QProcess::execute(program, arguments) != 0) {
            std::fprintf(stderr, "%s failed\n", qPrintable(program));
            std::exit(1);
        }
    }

    /// One repository made with svnadmin, then copies of it.
    void MakeRepositories(int count) const
    {
        const QString first = Repositories() + QStringLiteral("/r0");
        Run(QStringLiteral("svnadmin"), {QStringLiteral("create"), first});
        for (int i = 1; i < count; ++i)
            std::filesystem::copy(first.toStdString(), (Repositories() + QStringLiteral("/r%1").arg(i)).toStdString(),
                                  std::filesystem::copy_options::recursive);
    }

    /// A repository with one folder of many empty files, imported by the stock client.
    QString MakeFolder(int entries) const
    {
        const QString repository = Repositories() + QStringLiteral("/big");
        Run(QStringLiteral("svnadmin"), {QStringLiteral("create"), repository});
        const QString files = Scratch(QStringLiteral("files"));
        QDir().mkpath(files);
        for (int i = 0; i < entries; ++i)
            QFile(files + QStringLiteral("/file%1").arg(i)).open(QIODevice::WriteOnly);
        Run(QStringLiteral("svn"), {QStringLiteral("import"), QStringLiteral("-q"), QStringLiteral("-m"),
                                    QStringLiteral("m"), files, QStringLiteral("file://") + repository});
        return QStringLiteral("file://") + repository;
    }

private:
    QTemporaryDir m_folder;
    NoPreferences m_preferences;
    std::shared_ptr<ChannelPool> m_pool;
    std::unique_ptr<CModel> m_model;
};

} // namespace quenvolta::bench
