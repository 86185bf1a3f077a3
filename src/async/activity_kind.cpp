#include "async/activity_kind.h"

#include "ui/string_table.h"

#include <array>

namespace quenvolta
{

namespace
{

constexpr int kNone = 0;

// Numbers of the string table.
struct Texts {
    int text;
    int detail;
    int cancelling; // none: it can't be cancelled
};

// In the order of ActivityKind.
constexpr std::array<Texts, 6> kTexts{{
    {StringId::kImportingRepository, StringId::kImportMayTakeMinutes, StringId::kCancellingImport},
    {StringId::kImportingDump, StringId::kImportMayTakeMinutes, StringId::kCancellingImport},
    {kNone, StringId::kImportMayTakeMinutes, StringId::kCancellingImport},
    {StringId::kCreatingRepository, StringId::kImportMayTakeMinutes, StringId::kCancellingCreation},
    {StringId::kExportingSeed, StringId::kExportMayTakeMinutes, StringId::kCancellingExport},
    {StringId::kCheckingConsistency, StringId::kCheckMayTakeMinutes, kNone},
}};

QString Load(int id)
{
    return id != kNone ? LoadString(id) : QString();
}

} // namespace

ProgressTexts ProgressTextsOf(ActivityKind kind)
{
    const Texts& texts = kTexts.at(static_cast<std::size_t>(kind));
    return {.title = LoadString(StringId::kSnapInName),
            .text = Load(texts.text),
            .detail = LoadString(texts.detail),
            .cancellable = texts.cancelling != kNone,
            .cancellingText = Load(texts.cancelling),
            .cancellingDetail = {}};
}

} // namespace quenvolta
