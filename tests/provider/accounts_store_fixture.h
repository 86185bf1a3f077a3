#pragma once

#include "memory_folder.h"
#include "provider/accounts/account_store.h"
#include "provider/provider_error.h"
#include "provider/svn/svn_pool.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <gtest/gtest.h>
#include <svn_repos.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

/// The accounts of a server in a folder of their own, and the files that are made from them.
class AccountsStoreFixture : public ::testing::Test
{
protected:
    AccountsStoreFixture() { Open(m_path).Repair(); }

    /// A store as a process of its own has it.
    struct Opened {
        explicit Opened(const QString& path)
            : data(path)
            , store(data, {PasswordHash::kLowestCost, std::make_shared<TrueSystemAccounts>()})
        {
        }
        DataFolder data;
        AccountStore store;
        void Repair() { store.Repair(); }
        void Change(const AccountStore::Edit& edit) { store.Change(CancelCheck(), edit); }
    };
    static Opened Open(const QString& path) { return Opened(path); }

    QByteArray Content(const QString& name) const
    {
        QFile file(m_path + u'/' + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

    QList<QByteArray> Files() const
    {
        return {Content(u"accounts.json"_s), Content(u"htpasswd"_s), Content(u"authz"_s)};
    }

    QStringList TemporaryFiles() const { return QDir(m_path).entryList({u".*.new"_s}, QDir::Files | QDir::Hidden); }

    /// The users of the password file; each line must be whole.
    QStringList PasswordUsers() const
    {
        QStringList users;
        for (const QByteArray& line : Content(u"htpasswd"_s).split('\n')) {
            if (line.isEmpty())
                continue;
            EXPECT_EQ(line.size() - line.indexOf(':'), 61) << line.constData(); // a colon and the hash
            users.append(QString::fromUtf8(line.first(line.indexOf(':'))));
        }
        return users;
    }

    bool RulesParse() const
    {
        SvnPool pool;
        svn_authz_t* authz = nullptr;
        svn_error_t* error = svn_repos_authz_read4(&authz, QFile::encodeName(m_path + "/authz"_L1).constData(), nullptr,
                                                   TRUE, nullptr, nullptr, nullptr, pool.Get(), pool.Get());
        svn_error_clear(error);
        return error == nullptr;
    }

    static HRESULT CodeOf(const std::function<void()>& operation)
    {
        try {
            operation();
        } catch (const ProviderError& error) {
            EXPECT_FALSE(error.Description().isEmpty());
            return error.Code();
        }
        return S_OK;
    }

    QTemporaryDir m_folder{MemoryFolder()};
    QString m_path = m_folder.filePath(u"data"_s);
};

inline Principal User(const QString& name)
{
    return {PrincipalKind::User, name};
}
inline Principal Group(const QString& name)
{
    return {PrincipalKind::Group, name};
}

} // namespace quenvolta
