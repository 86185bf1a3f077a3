#include "model/update_response.h"

#include "foundation/com_exception.h"
#include "foundation/file_time.h"
#include "foundation/format.h"
#include "model/xml_element_reader.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace quenvolta
{

namespace
{

constexpr int kResponseDepth = 0;
constexpr int kUpdateDepth = 1;
constexpr int kValueDepth = 2;

/// No version and no path of a page is longer than this.
constexpr qsizetype kLongestValue = 2048;

constexpr double kMillisecondsPerDay = 24.0 * 60 * 60 * 1000;
constexpr int kLastYear = 9999;

#define UPDATE_TEXT(name, text) constexpr char16_t k##name[] = u"" text;
#define UPDATE_FAILURE(code, kind)
#include "resources/update_texts.def"
#undef UPDATE_FAILURE
#undef UPDATE_TEXT

enum class FailureKind { Unexpected, Connection };

struct DownloadFailure {
    std::uint32_t code;
    FailureKind kind;
};

constexpr std::array kDownloadFailures{
#define UPDATE_TEXT(name, text)
#define UPDATE_FAILURE(code, kind) DownloadFailure{code, FailureKind::kind},
#include "resources/update_texts.def"
#undef UPDATE_FAILURE
#undef UPDATE_TEXT
};

UpdateDate DateOf(const QString& fileTime)
{
    const FileTime time = std::strtoll(fileTime.toUtf8().constData(), nullptr, 10);
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(UnixMillisecondsFromFileTime(time));
    if (time < 0 || local.date().year() > kLastYear)
        return {.status = UpdateDate::Status::Invalid};
    const QDate day = local.date();
    return {.status = UpdateDate::Status::Valid,
            .days = static_cast<double>(QDate(1899, 12, 30).daysTo(day)) +
                    local.time().msecsSinceStartOfDay() / kMillisecondsPerDay};
}

struct TextElement {
    QStringView name;
    QString UpdateInfo::*value;
};

constexpr std::array kTextElements{
    TextElement{u"Version", &UpdateInfo::version},
    TextElement{u"LearnMore", &UpdateInfo::learnMorePath},
    TextElement{u"Download", &UpdateInfo::downloadPath},
};

bool NextElementNamed(XmlElementReader& reader, int depth, QStringView name)
{
    while (reader.NextElement(depth)) {
        if (reader.LocalName() == name)
            return true;
    }
    return false;
}

UpdateInfo ReadUpdate(XmlElementReader& reader)
{
    UpdateInfo info{.status = UpdateCheckStatus::UpdateAvailable};
    while (reader.NextElement(kValueDepth)) {
        const QString name = reader.LocalName();
        const auto* const text = std::ranges::find(kTextElements, name, &TextElement::name);
        if (text != kTextElements.end())
            info.*(text->value) = reader.Value();
        else if (name == u"Date")
            info.date = DateOf(reader.Value());
    }
    return info;
}

UpdateInfo ReadResponse(XmlElementReader reader)
{
    if (!NextElementNamed(reader, kResponseDepth, u"Response"))
        return {};
    if (!NextElementNamed(reader, kUpdateDepth, u"Update"))
        return {.status = UpdateCheckStatus::UpToDate};
    return ReadUpdate(reader);
}

bool IsUsable(const QString& value)
{
    return !value.isEmpty() && value.size() <= kLongestValue;
}

bool IsConsistent(const UpdateInfo& info)
{
    if (info.status == UpdateCheckStatus::UpToDate)
        return info == UpdateInfo{.status = UpdateCheckStatus::UpToDate};
    return info.status == UpdateCheckStatus::UpdateAvailable && IsUsable(info.version) &&
           IsUsable(info.learnMorePath) && IsUsable(info.downloadPath) && info.date.status == UpdateDate::Status::Valid;
}

} // namespace

UpdateInfo ReadUpdateResponse(const QString& path)
{
    try {
        UpdateInfo info = ReadResponse(XmlElementReader(path));
        if (IsConsistent(info))
            return info;
    } catch (const Exception&) { // an answer that can't be read is one kind of failure, whatever is wrong with it
    }
    return {.status = UpdateCheckStatus::Failed, .errorText = QString::fromUtf16(kUnreadable)};
}

UpdateInfo FailedUpdateCheck(HRESULT code)
{
    const auto bits = static_cast<std::uint32_t>(code);
    const auto* const known = std::ranges::find(kDownloadFailures, bits, &DownloadFailure::code);
    QString text;
    if (known == kDownloadFailures.end())
        text = ComException(code).GetMessage();
    else
        text = known->kind == FailureKind::Connection ? Format(kConnection, bits) : Format(kUnexpected, bits);
    return {.status = UpdateCheckStatus::Failed, .errorText = text};
}

} // namespace quenvolta
