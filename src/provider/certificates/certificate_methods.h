#pragma once

#include "provider/certificates/certificate_store.h"
#include "provider/data_folder.h"
#include "provider/management_class.h"

namespace quenvolta
{

/// The methods of Quenvolta_Service for the server's certificate. They begin to count when the web service starts next.
class CertificateMethods
{
public:
    explicit CertificateMethods(DataFolder& data);

    /// Gives the class these methods; `data` must outlive it.
    static void AddTo(ManagementClass& service, DataFolder& data);

private:
    /// How a certificate stands to its key; the numbers are ValidateCertificate's answers.
    enum class Match : std::uint32_t { HeldKey = 0, OwnKey = 1, OwnKeyDoesNotFit = 2, NoKey = 3, OwnKeyUnreadable = 4 };

    static CertificateBundle BundleOf(const MethodCall& call);
    static Match MatchOf(const CertificateBundle& bundle, const PrivateKeyPtr& heldKey);

    void Describe(MethodCall& call) const;
    void CreateSelfSigned(MethodCall& call) const;
    void CreateRequest(MethodCall& call) const;
    void Import(MethodCall& call) const;
    void Validate(MethodCall& call) const;

    DataFolder& m_data;
    CertificateStore m_store;
};

} // namespace quenvolta
