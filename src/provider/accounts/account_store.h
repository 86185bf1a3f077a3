#pragma once

#include "provider/accounts/access_rules.h"
#include "provider/accounts/account_model.h"
#include "provider/accounts/password_hash.h"
#include "provider/accounts/system_accounts.h"
#include "provider/data_folder.h"
#include "provider/data_lock.h"
#include "provider/unique_fd.h"

#include <QMutex>
#include <QString>

#include <functional>
#include <memory>

namespace quenvolta
{

class StagedFiles;

/// The accounts and permissions of a server in its data folder: one file that is the truth, and what the web service
/// reads, made from it. Every change is durable when the call returns, and either happens whole or not at all; after a
/// crash in between, Repair finishes it. May be used from several threads. Failures are ProviderErrors.
class AccountStore
{
public:
    struct Options {
        unsigned long passwordCost = PasswordHash::kDefaultCost;
        std::shared_ptr<const SystemAccounts> systemAccounts = std::make_shared<TrueSystemAccounts>();
    };

    explicit AccountStore(DataFolder& data)
        : AccountStore(data, Options())
    {
    }
    AccountStore(DataFolder& data, Options options);

    /// The names of the files in the data folder.
    static constexpr QStringView kAccountsFile = u"accounts.json";
    static constexpr QStringView kPasswordFile = u"htpasswd"; ///< for AuthUserFile
    static constexpr QStringView kRulesFile = u"authz";       ///< for AuthzSVNAccessFile

    /// The accounts as they are now; the file is only read when it has changed.
    std::shared_ptr<const AccountModel> Read() const;

    using Edit = std::function<void(AccountModel&)>;
    /// Carries `edit` out on the present accounts and keeps the outcome. What it throws changes nothing.
    void Change(const CancelCheck& cancel, const Edit& edit);
    /// The same for those who hold the lock already.
    void Change(const DataLock& lock, const Edit& edit);

    /// A password's hash as the accounts keep it.
    QByteArray HashPassword(const QString& user, const QString& password) const;

    /// Puts the rules in line with how one signs in now and with the present members of the system's groups. To be
    /// called when either has changed, and before the web service starts.
    void RenewRules(const CancelCheck& cancel = {});

    /// To be called at the start: makes the files when they are missing, finishes what a crash interrupted, and removes
    /// what it left. Does what RenewRules does, too.
    void Repair(const CancelCheck& cancel = {});

    /// Gives a repository the permissions of another one: before a rename, so that it never stands without them; those
    /// of the old name are forgotten after it.
    void CopyRepository(const DataLock& lock, const QString& from, const QString& to);
    /// Removes the permissions of a repository: of one that was deleted, and of one that is made, before it is there.
    /// So nobody gets in by a name that another repository had before.
    void ForgetRepository(const DataLock& lock, const QString& name);
    /// Removes those of folders that were deleted, and of all below them.
    void ForgetPaths(const QString& repository, const QStringList& paths, const CancelCheck& cancel);

private:
    struct Loaded {
        UniqueFd file; ///< kept open, so that no other file gets its number
        quint64 device = 0;
        quint64 number = 0;
        qint64 changed = 0;
        std::shared_ptr<const AccountModel> model;
    };

    QString PathOf(QStringView name) const { return m_data.Path() + u'/' + name.toString(); }
    std::shared_ptr<const AccountModel> Load() const;
    void CheckNothingIsLost() const;
    void StageDerived(StagedFiles& files, const AccountModel& model) const;

    DataFolder& m_data;
    Options m_options;
    mutable QMutex m_mutex; // guards m_loaded
    mutable Loaded m_loaded;
};

} // namespace quenvolta
