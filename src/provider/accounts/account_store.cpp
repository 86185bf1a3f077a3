#include "provider/accounts/account_store.h"

#include "provider/accounts/account_document.h"
#include "provider/accounts/account_texts.h"
#include "provider/accounts/rules_writer.h"
#include "provider/accounts/staged_files.h"
#include "provider/provider_error.h"
#include "provider/server_settings_reader.h"
#include "provider/svn/svn_failure.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

QByteArray ReadWhole(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray PasswordFileOf(const AccountModel& model)
{
    QByteArray text;
    for (auto user = model.PasswordHashes().cbegin(); user != model.PasswordHashes().cend(); ++user)
        text += user.key().toUtf8() + ':' + *user + '\n';
    return text;
}

} // namespace

AccountStore::AccountStore(DataFolder& data, Options options)
    : m_data(data)
    , m_options(std::move(options))
{
}

std::shared_ptr<const AccountModel> AccountStore::Read() const
{
    const QMutexLocker locker(&m_mutex);
    return Load();
}

std::shared_ptr<const AccountModel> AccountStore::Load() const
{
    const QString path = PathOf(kAccountsFile);
    struct stat status {
    };
    UniqueFd descriptor(::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    if (!descriptor.IsOpen() && errno == ENOENT) {
        CheckNothingIsLost();
        return std::make_shared<const AccountModel>();
    }
    if (!descriptor.IsOpen() || ::fstat(descriptor.Get(), &status) != 0)
        ThrowSystemError(errno, accounttexts::kCannotReadAccounts.arg(path));
    constexpr qint64 kNanoseconds = 1'000'000'000;
    const qint64 changed = status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec;
    if (m_loaded.model && m_loaded.device == status.st_dev && m_loaded.number == status.st_ino &&
        m_loaded.changed == changed)
        return m_loaded.model;
    QFile file;
    if (!file.open(descriptor.Get(), QIODevice::ReadOnly))
        ThrowSystemError(errno, accounttexts::kCannotReadAccounts.arg(path));
    const QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        ThrowSystemError(EIO, accounttexts::kCannotReadAccounts.arg(path));
    auto model = std::make_shared<const AccountModel>(AccountDocument::Read(content, path));
    m_loaded = {std::move(descriptor), status.st_dev, status.st_ino, changed, model};
    return model;
}

// Without the accounts' file, what was made from it would be made anew, and empty.
void AccountStore::CheckNothingIsLost() const
{
    const QString passwords = PathOf(kPasswordFile);
    if (QFileInfo(passwords).size() > 0)
        throw ProviderError(WBEM_E_FAILED, accounttexts::kAccountsMissing.arg(PathOf(kAccountsFile), passwords));
}

void AccountStore::Change(const CancelCheck& cancel, const Edit& edit)
{
    Change(DataLock(m_data.Path(), cancel), edit);
}

void AccountStore::Change(const DataLock&, const Edit& edit)
{
    const std::shared_ptr<const AccountModel> before = Read();
    AccountModel after = *before;
    edit(after);
    StagedFiles files(m_data.Path());
    if (!(after == *before)) {
        const QByteArray content = AccountDocument::Write(after);
        if (!(AccountDocument::Read(content, PathOf(kAccountsFile)) == after))
            throw ProviderError(WBEM_E_FAILED, accounttexts::kReadBackDiffers.arg(PathOf(kAccountsFile)));
        files.Stage(kAccountsFile.toString(), content);
    }
    StageDerived(files, after);
    files.Commit();
}

// The password file comes before the rules: who is deleted can't sign in any more when the rules that kept them out go.
void AccountStore::StageDerived(StagedFiles& files, const AccountModel& model) const
{
    files.StageIfNew(kPasswordFile.toString(), PasswordFileOf(model));
    const bool useSystem = ServerSettingsReader(m_data.Settings()).Values().GetUseWindowsAuth();
    const RulesFile rules = WriteRules(AccessRules::Resolve(
        model, useSystem ? SignIn::SystemAccounts : SignIn::ServerUsers, *m_options.systemAccounts));
    if (files.StageIfNew(kRulesFile.toString(), rules.Text()))
        rules.Check(ReadWhole(PathOf(kRulesFile)));
}

QByteArray AccountStore::HashPassword(const QString& user, const QString& password) const
{
    return PasswordHash::Make(user, password, m_options.passwordCost);
}

void AccountStore::RenewRules(const CancelCheck& cancel)
{
    Change(cancel, [](AccountModel&) {});
}

void AccountStore::Repair(const CancelCheck& cancel)
{
    const DataLock lock(m_data.Path(), cancel);
    for (const QStringView name : {kAccountsFile, kPasswordFile, kRulesFile})
        StagedFiles::RemoveLeftover(m_data.Path(), name.toString());
    if (!QFileInfo::exists(PathOf(kAccountsFile))) {
        CheckNothingIsLost();
        StagedFiles first(m_data.Path());
        first.Stage(kAccountsFile.toString(), AccountDocument::Write(AccountModel()));
        first.Commit();
    }
    Change(lock, [](AccountModel&) {});
}

void AccountStore::CopyRepository(const DataLock& lock, const QString& from, const QString& to)
{
    const std::shared_ptr<const AccountModel> now = Read();
    if (now->KnowsRepository(from) || now->KnowsRepository(to))
        Change(lock, [&](AccountModel& model) { model.CopyRepository(from, to); });
}

void AccountStore::ForgetRepository(const DataLock& lock, const QString& name)
{
    if (!name.isEmpty() && Read()->KnowsRepository(name))
        Change(lock, [&name](AccountModel& model) { model.RemoveRepository(name); });
}

void AccountStore::ForgetPaths(const QString& repository, const QStringList& paths, const CancelCheck& cancel)
{
    if (!Read()->KnowsRepository(repository))
        return;
    Change(cancel, [&](AccountModel& model) {
        for (const QString& path : paths)
            model.RemovePath(repository, path);
    });
}

} // namespace quenvolta
