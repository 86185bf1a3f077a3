#include "foundation/base64.h"

#include "foundation/win32_exception.h"

#include <QList>
#include <QStringView>

#include <algorithm>
#include <array>
#include <optional>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

struct FormRule {
    Base64Form form;
    bool headerAllowed;
    bool plainAllowed;
};

constexpr std::array kForms{
    FormRule{Base64Form::Header, true, false},
    FormRule{Base64Form::Plain, false, true},
    FormRule{Base64Form::RequestHeader, true, false},
    FormRule{Base64Form::Any, true, true},
};

constexpr QStringView kBegin = u"-----BEGIN ";
constexpr QStringView kEnd = u"-----END ";

bool IsMarker(QStringView line, QStringView start)
{
    return line.startsWith(start) && line.endsWith(QStringView(u"-----"));
}

// What stands between the first marker lines; nothing when there are none.
std::optional<QStringView> BodyBetweenMarkers(QStringView text)
{
    std::optional<qsizetype> start;
    for (qsizetype position = 0; position < text.size();) {
        const qsizetype lineFeed = text.indexOf(u'\n', position);
        const qsizetype end = lineFeed < 0 ? text.size() : lineFeed;
        const QStringView line = text.sliced(position, end - position).trimmed();
        if (!start && IsMarker(line, kBegin))
            start = qMin(end + 1, text.size());
        else if (start && IsMarker(line, kEnd))
            return text.sliced(*start, position - *start);
        position = end + 1;
    }
    return std::nullopt;
}

std::optional<QByteArray> DecodeBody(QStringView body)
{
    QByteArray digits;
    digits.reserve(body.size());
    for (const QChar c : body) {
        if (c.unicode() > 0x7F)
            return std::nullopt;
        if (!c.isSpace())
            digits.append(c.toLatin1());
    }
    if (digits.isEmpty() || digits.size() % 4 != 0)
        return std::nullopt;
    QByteArray::FromBase64Result result =
        QByteArray::fromBase64Encoding(digits, QByteArray::AbortOnBase64DecodingErrors);
    // Bits that belong to no byte must be zero, so that one block has one text.
    if (!result || result.decoded.toBase64() != digits)
        return std::nullopt;
    return std::move(result.decoded);
}

} // namespace

QByteArray DecodeBase64(const QString& text, Base64Form form)
{
    const auto rule =
        std::find_if(kForms.begin(), kForms.end(), [form](const FormRule& each) { return each.form == form; });
    if (rule == kForms.end())
        throw Win32Exception(ERROR_INVALID_PARAMETER, u"Cannot decode base64 data");
    std::optional<QStringView> body = rule->headerAllowed ? BodyBetweenMarkers(text) : std::nullopt;
    if (!body && rule->plainAllowed)
        body = text;
    const std::optional<QByteArray> bytes = body ? DecodeBody(*body) : std::nullopt;
    if (!bytes)
        throw Win32Exception(ERROR_INVALID_DATA, u"Cannot decode base64 data");
    return *bytes;
}

} // namespace quenvolta
