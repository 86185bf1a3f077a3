#pragma once

#include "platform/channel/protocol.h"
#include "platform/hresult.h"
#include "platform/wbem/class_definition.h"
#include "platform/wbem/wbem_services.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QUuid>

#include <cstdint>
#include <optional>
#include <variant>

namespace quenvolta
{

/// The first message each way.
struct HelloMessage {
    int protocolVersion = kProtocolVersion;
    /// What the peer tells of itself ("product", "version"); empty when it speaks another protocol version.
    QMap<QString, QString> about;
};

/// A request. Every call is answered by one Result, Rows may precede it.
struct CallMessage {
    /// Unique on its channel while the call is pending.
    std::uint32_t callId = 0;
    /// The request's identity across channels: the same one means that the same request is made again.
    QUuid requestId;
    Operation operation = Operation::OpenNamespace;
    /// The part behind `root\`.
    QString namespaceName;
    /// An object path or the name of a class.
    QString target;
    QString method;
    /// A method's input parameters, or null.
    WbemObjectPtr input;
    /// Null when it has no values. Values are null, bool, numbers, texts and lists of texts.
    WbemContextPtr context;
};

/// Objects of one class, of which there is at least one property, as bare values in the order of the shape's.
struct RowsMessage {
    std::uint32_t callId = 0;
    /// The output parameter whose elements these are; without one, the rows belong to an enumeration.
    std::optional<QString> parameter;
    /// Its methods don't travel.
    ClassDefinitionPtr shape;
    /// Row behind row.
    QList<Variant> values;

    qsizetype Rows() const { return values.size() / shape->properties.size(); }
};

/// What the server says of a failure: nothing, words, or an object (WbemErrorObject when it was received).
using ResultError = std::variant<std::monostate, QString, WbemObjectPtr>;

/// The end of a call.
struct ResultMessage {
    std::uint32_t callId = 0;
    HRESULT code = S_OK;
    /// An instance, a class's definition or output parameters; array parameters that travelled as rows are null in it.
    WbemObjectPtr object;
    ResultError error;
};

/// The client doesn't want the rest of an enumeration. Its Result still comes.
struct StopMessage {
    std::uint32_t callId = 0;
};

/// In the order of MessageKind.
using Message = std::variant<HelloMessage, CallMessage, RowsMessage, ResultMessage, StopMessage>;

} // namespace quenvolta
