#pragma once

#include "platform/wbem/variant.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <utility>

namespace quenvolta::test
{

/// A line of a permission list: the account's class ("Quenvolta_User", ...), its name or SID, and the level.
struct StandInPermission {
    QString accountClass = {};
    QString name = {};
    std::uint32_t level = 0;

    bool operator==(const StandInPermission&) const = default;
};

/// A repository's delegation or replication.
struct StandInRole {
    bool enabled = false;
    /// Security identifiers.
    QStringList accounts = {};

    bool operator==(const StandInRole&) const = default;
};

struct StandInRepository {
    QString name = {};
    /// 0 FSFS, 1 QDFS master, 2 QDFS slave; nothing for one whose type can't be told.
    std::optional<std::uint32_t> type = 0;
    std::optional<std::uint32_t> revisions = 0;
    QString masterServer = {};
    QString masterRepository = {};
    /// Path ("/trunk") -> whether it is a folder. The root isn't listed.
    QMap<QString, bool> entries = {};
    /// The configured scripts by the server's numbers for them.
    QMap<int, QString> hooks = {};
    StandInRole delegation = {};
    StandInRole replication = {};
};

struct StandInGroup {
    QString name = {};
    /// Object paths of users and groups.
    QStringList members = {};
};

/// What a stand-in server keeps. Tests fill and read it freely.
struct StandInData {
    QList<StandInRepository> repositories;
    QStringList users;
    QList<StandInGroup> groups;
    /// By (repository, path); ("", "") is the server-wide list.
    QMap<std::pair<QString, QString>, QList<StandInPermission>> permissions;
    /// Properties of the web service, the QDFS service and the version object by their names.
    QMap<QString, Variant> service;
    QMap<QString, Variant> qdfsService;
    QMap<QString, Variant> versionInfo;
    /// The addresses of each network adapter; null for an adapter without any.
    QList<std::optional<QStringList>> adapters;
    /// Security identifiers.
    QStringList admins;
    QStringList supervisors;
    QStringList partners;
    /// Properties of the certificate by their names; empty when there is none.
    QMap<QString, Variant> certificate;
    /// What the server answers when it validates a certificate, and when it is asked for the kind of an import.
    std::uint32_t validation = 0;
    std::uint32_t importSourceType = 0;
    /// Folders that the server doesn't have and makes only when it must.
    QStringList missingFolders;

    StandInRepository* FindRepository(const QString& name);
};

} // namespace quenvolta::test
