#pragma once

#include "provider/data_folder.h"
#include "provider/management_namespace.h"
#include "provider/provider_input.h"
#include "provider/provider_output.h"
#include "provider/request_journal.h"
#include "provider/served_version.h"

#include <QString>

#include <memory>
#include <vector>

namespace quenvolta
{

/// Serves one console over a pair of streams until the input ends.
class ProviderServer
{
public:
    struct Options {
        QString dataFolder;
        ServedVersion version;
    };

    ProviderServer(int input, int output, Options options);
    ~ProviderServer();

    /// Returns 0 when the input ended as it should, 1 when it was broken.
    int Run();

    /// Why Run returned 1.
    const QString& Fault() const { return m_fault; }

private:
    void Answer(const CallMessage& call);
    ResultMessage Carry(const CallMessage& call, CallContext& context, ManagementNamespace& target);
    ResultMessage CarryChange(const CallMessage& call, CallContext& context, ManagementNamespace& target);
    void OpenServer();
    ManagementNamespace& RequireNamespace(const QString& name);
    ResultMessage Failure(const CallMessage& call, const class ProviderError& error) const;

    ProviderInput m_input;
    ProviderOutput m_output;
    Options m_options;
    // Opened with the first namespace, so that a folder that can't be used is an answer and not a silent end.
    std::unique_ptr<DataFolder> m_data;
    std::unique_ptr<RequestJournal> m_journal;
    std::vector<std::unique_ptr<ManagementNamespace>> m_namespaces;
    QString m_fault;
};

} // namespace quenvolta
