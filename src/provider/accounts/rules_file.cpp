#include "provider/accounts/rules_file.h"

#include "provider/accounts/account_texts.h"
#include "provider/svn/svn_failure.h"
#include "provider/svn/svn_pool.h"

#include <QSet>

#include <algorithm>
#include <svn_repos.h>
#include <svn_string.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr char kHeading[] = "# Written by the server from its accounts; what is changed here is lost.\n";
constexpr qsizetype kSectionsOfPiece = 64;

constexpr char kAliasesTitle[] = "[aliases]\n";
constexpr char kGroupsTitle[] = "[groups]\n";

QByteArray Block(const char* title, const QList<QByteArray>& lines)
{
    return lines.isEmpty() ? QByteArray() : '\n' + (title + lines.join());
}

// Has the library read a text of rules as it reads the file.
void Parse(const QByteArray& text)
{
    SvnPool pool;
    const svn_string_t string{text.constData(), static_cast<apr_size_t>(text.size())};
    svn_authz_t* authz = nullptr;
    if (svn_error_t* error = svn_repos_authz_parse2(&authz, svn_stream_from_string(&string, pool.Get()), nullptr,
                                                    nullptr, nullptr, pool.Get(), pool.Get()))
        ThrowSvnError(error, accounttexts::kRulesRefused.Whole());
}

// The sections of a file as they stand there, the definitions among them.
QList<QByteArrayView> BlocksOf(QByteArrayView text)
{
    QList<QByteArrayView> blocks;
    // A blank line stands before each.
    qsizetype from = text.indexOf("\n\n[") + 2;
    while (from >= 2 && from < text.size()) {
        const qsizetype next = text.indexOf("\n\n[", from);
        const qsizetype to = next < 0 ? text.size() : next + 1;
        blocks.append(text.sliced(from, to - from));
        from = to + 1;
    }
    return blocks;
}

QSet<QByteArrayView> LinesOf(QByteArrayView block)
{
    QSet<QByteArrayView> lines;
    while (!block.isEmpty()) {
        const qsizetype end = block.indexOf('\n');
        lines.insert(block.first(end < 0 ? block.size() : end + 1));
        block = block.sliced(end < 0 ? block.size() : end + 1);
    }
    return lines;
}

} // namespace

QByteArray RulesFile::Text() const
{
    QByteArray text = kHeading + Block(kAliasesTitle, aliases.values()) + Block(kGroupsTitle, groups.values());
    for (const Section& section : sections)
        text += '\n' + section.text;
    return text;
}

void RulesFile::Check(const QByteArray& before) const
{
    QSet<QByteArrayView> known;
    for (const QByteArrayView block : BlocksOf(before)) {
        known.insert(block);
        if (block.startsWith(kGroupsTitle) || block.startsWith(kAliasesTitle))
            known.unite(LinesOf(block));
    }
    const auto isKnown = [&known](const QMap<QByteArray, QByteArray>& definitions, const QByteArray& name) {
        return known.contains(definitions.value(name));
    };
    const bool sameAliases = std::all_of(aliases.keyBegin(), aliases.keyEnd(),
                                         [&](const QByteArray& name) { return isKnown(aliases, name); });
    RulesFile piece;
    piece.aliases = aliases;
    for (const Section& section : sections) {
        if (sameAliases && known.contains(section.text) &&
            std::all_of(section.groups.begin(), section.groups.end(),
                        [&](const QByteArray& name) { return isKnown(groups, name); }))
            continue;
        piece.sections.append(section);
        for (const QByteArray& name : section.groups)
            piece.groups.insert(name, groups.value(name));
        if (piece.sections.size() == kSectionsOfPiece) {
            Parse(piece.Text());
            piece.sections.clear();
            piece.groups.clear();
        }
    }
    if (!piece.sections.isEmpty())
        Parse(piece.Text());
}

} // namespace quenvolta
