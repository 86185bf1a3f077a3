#pragma once

namespace quenvolta
{

/// The Subversion library of this process.
class SvnLibrary
{
public:
    /// Starts the library once, before anything else touches it; later calls cost nothing. Throws ProviderError.
    static void Initialize();
};

} // namespace quenvolta
