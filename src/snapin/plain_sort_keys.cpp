#include "snapin/plain_sort_keys.h"

#include <array>

namespace quenvolta
{

namespace
{

constexpr std::string_view kPunctuation = " _-,;:!?.'\"()[]{}@*/\\&#%`^+<=>|~$";
constexpr char kFolderMark = 1;
constexpr char kFileMark = 2;
constexpr char kNumberWeight = 64;
constexpr char kFirstLetterWeight = 65;
// Beyond it a run of digits has no key of one byte of length.
constexpr qsizetype kMostDigits = 100;

// 0 for what isn't plain.
constexpr std::array<char, 128> MakeWeights()
{
    std::array<char, 128> weights{};
    for (std::size_t i = 0; i < kPunctuation.size(); ++i)
        weights[static_cast<unsigned char>(kPunctuation[i])] = static_cast<char>(i + 1);
    for (std::size_t i = 0; i < 10; ++i)
        weights['0' + i] = kNumberWeight;
    for (std::size_t i = 0; i < 26; ++i)
        weights['a' + i] = weights['A' + i] = static_cast<char>(kFirstLetterWeight + static_cast<char>(i));
    return weights;
}
constexpr std::array<char, 128> kWeights = MakeWeights();

bool IsDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}

} // namespace

void PlainSortKeys::Reserve(std::size_t names)
{
    constexpr std::size_t kUsualLength = 16;
    m_bytes.reserve(names * kUsualLength);
    m_ends.reserve(names + 1);
}

bool PlainSortKeys::Add(const QString& name, bool isFolder)
{
    m_bytes.push_back(isFolder ? kFolderMark : kFileMark);
    const char16_t* unit = reinterpret_cast<const char16_t*>(name.utf16());
    const char16_t* const end = unit + name.size();
    while (unit != end) {
        const char weight = *unit < kWeights.size() ? kWeights[*unit] : '\0';
        if (weight == 0)
            return false;
        m_bytes.push_back(weight);
        if (weight != kNumberWeight) {
            ++unit;
            continue;
        }
        // A number is its count of digits and its digits, so that bytes compare as values do.
        while (unit + 1 != end && *unit == u'0' && IsDigit(unit[1]))
            ++unit;
        const char16_t* const first = unit;
        while (unit != end && IsDigit(*unit))
            ++unit;
        if (unit - first > kMostDigits)
            return false;
        m_bytes.push_back(static_cast<char>(unit - first));
        for (const char16_t* digit = first; digit != unit; ++digit)
            m_bytes.push_back(static_cast<char>(*digit));
    }
    m_ends.push_back(m_bytes.size());
    return true;
}

} // namespace quenvolta
