#pragma once

#include "platform/hresult.h"

#include <QByteArray>

#include <cstdint>

namespace quenvolta
{

/// What a snap-in implements that keeps something in console files.
class IPersistStreamInit
{
public:
    virtual ~IPersistStreamInit() = default;
    /// S_FALSE when nothing changed since the last loading or saving.
    virtual HRESULT IsDirty() const = 0;
    /// A stream that isn't understood leaves the snap-in as it was.
    virtual HRESULT Load(const QByteArray& stream) = 0;
    virtual HRESULT Save(QByteArray* stream, bool clearDirty) = 0;
    /// The most bytes that Save writes.
    virtual HRESULT GetSizeMax(std::uint64_t* size) const = 0;
    virtual HRESULT InitNew() = 0;
};

} // namespace quenvolta
