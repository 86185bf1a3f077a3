#include "platform/channel/pending_call.h"

#include "platform/wbem/wbem_object.h"

#include <algorithm>
#include <utility>

namespace quenvolta
{

namespace
{

struct ErrorInfoMaker {
    ErrorInfoPtr operator()(std::monostate) const { return nullptr; }
    ErrorInfoPtr operator()(const QString& text) const { return CreateErrorInfo(text); }
    ErrorInfoPtr operator()(const WbemObjectPtr& object) const { return std::dynamic_pointer_cast<IErrorInfo>(object); }
};

} // namespace

bool PendingCall::Take(const RowsMessage& message)
{
    const Operation expected = message.parameter ? Operation::ExecMethod : Operation::CreateInstanceEnum;
    if (m_operation != expected)
        return false;
    if (message.parameter && message.parameter == m_streamed) {
        m_elements.append(message);
        return true;
    }
    QList<WbemObjectPtr>& objects = message.parameter ? m_parameters[*message.parameter] : m_instances;
    for (qsizetype first = 0; first < message.values.size(); first += message.shape->properties.size())
        objects.append(std::make_shared<WbemObject>(message.shape, message.values, first));
    return true;
}

bool PendingCall::Take(const ResultMessage& message)
{
    if (Succeeded(message.code)) {
        if (m_operation == Operation::GetObject && !message.object)
            return false;
        if (!TakeParameters(message.object))
            return false;
    }
    m_code = message.code;
    m_object = message.object;
    m_error = std::visit(ErrorInfoMaker{}, message.error);
    m_done = true;
    return true;
}

void PendingCall::VisitElements(const WbemObjectVisitor& visit)
{
    while (!m_elements.isEmpty()) {
        const RowsMessage rows = m_elements.takeFirst(); // whose memory is free for the next message behind the loop
        std::shared_ptr<WbemObject> object;
        for (qsizetype first = 0; first < rows.values.size(); first += rows.shape->properties.size()) {
            // One object after the other is made of the same memory, unless somebody holds the last one.
            if (object && object.use_count() == 1)
                *object = WbemObject(rows.shape, rows.values, first);
            else
                object = std::make_shared<WbemObject>(rows.shape, rows.values, first);
            visit(object);
        }
    }
    // A short list may come whole.
    Variant whole;
    if (!m_done || !m_object || Failed(m_object->Get(*m_streamed, &whole)))
        return;
    if (const auto* const elements = std::get_if<QList<WbemObjectPtr>>(&whole))
        std::ranges::for_each(*elements, visit);
}

bool PendingCall::TakeParameters(const WbemObjectPtr& object)
{
    for (auto each = m_parameters.cbegin(); each != m_parameters.cend(); ++each) {
        Variant present;
        const bool empty = object && Succeeded(object->Get(each.key(), &present)) && IsNullVariant(present);
        if (!empty || Failed(object->Put(each.key(), each.value())))
            return false;
    }
    m_parameters.clear();
    return true;
}

void PendingCall::Lose(HRESULT code, const ErrorInfoPtr& error)
{
    m_code = code;
    m_error = error;
    m_done = true;
    m_lost = true;
}

} // namespace quenvolta
