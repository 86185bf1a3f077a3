#include "provider/accounts/password_hash.h"

#include "provider/accounts/account_names.h"
#include "provider/accounts/account_texts.h"
#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"

#include <array>
#include <cerrno>
#include <crypt.h>
#include <cstring>
#include <memory>

namespace quenvolta
{

namespace
{

// The password in the form that is hashed, and the hash's working memory: both are wiped.
class Hashing
{
public:
    explicit Hashing(const QString& password)
        : m_bytes(password.toUtf8())
        , m_data(std::make_unique<crypt_data>())
    {
    }
    ~Hashing()
    {
        ::explicit_bzero(m_bytes.data(), static_cast<std::size_t>(m_bytes.size()));
        ::explicit_bzero(m_data.get(), sizeof(crypt_data));
    }
    Q_DISABLE_COPY_MOVE(Hashing)

    /// Empty when it failed; errno tells why.
    QByteArray Run(const char* setting)
    {
        const char* hash = ::crypt_rn(m_bytes.constData(), setting, m_data.get(), sizeof(crypt_data));
        return QByteArray(hash);
    }

private:
    QByteArray m_bytes;
    std::unique_ptr<crypt_data> m_data;
};

} // namespace

QByteArray PasswordHash::Make(const QString& user, const QString& password, unsigned long cost)
{
    AccountNames::CheckPassword(user, password);
    std::array<char, CRYPT_GENSALT_OUTPUT_SIZE> setting{};
    QByteArray hash;
    if (::crypt_gensalt_rn("$2y$", cost, nullptr, 0, setting.data(), static_cast<int>(setting.size())))
        hash = Hashing(password).Run(setting.data());
    if (hash.isEmpty())
        throw ProviderError(WBEM_E_FAILED,
                            accounttexts::kCannotHash.arg(RepositoryNames::Show(user), qt_error_string(errno)));
    return hash;
}

bool PasswordHash::Matches(const QString& password, const QByteArray& hash)
{
    return !hash.isEmpty() && Hashing(password).Run(hash.constData()) == hash;
}

} // namespace quenvolta
