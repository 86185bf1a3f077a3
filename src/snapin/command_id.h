#pragma once

namespace quenvolta::CommandId
{

// The commands of the nodes. The text that explains one has the same number in the string table.
inline constexpr int kCreateRepository = 32770;
inline constexpr int kCopyUrl = 32771;
inline constexpr int kBrowse = 32772;
inline constexpr int kManageSecurity = 32773;
inline constexpr int kCreateUser = 32774;
inline constexpr int kSetPassword = 32775;
inline constexpr int kStart = 32786;
inline constexpr int kCreateGroup = 32787;
inline constexpr int kStop = 32788;
inline constexpr int kRestart = 32789;
inline constexpr int kEditGroup = 32790;
inline constexpr int kCommandPrompt = 32791;
inline constexpr int kImportRepository = 32793;
inline constexpr int kProperties = 32796;
inline constexpr int kUpgradeRepositories = 32803;
inline constexpr int kManageHooks = 32805;
inline constexpr int kCreateFolder = 32806;
inline constexpr int kCreateProjectStructure = 32807;
inline constexpr int kConnect = 32808;
inline constexpr int kCopyUrlOfDialog = 32810;
inline constexpr int kManageDelegation = 32811;
inline constexpr int kConvertToQdfs = 32812;
inline constexpr int kConvertToFsfs = 32813;
inline constexpr int kConsistencyCheck = 32814;
inline constexpr int kExportReplicationSeed = 32815;

} // namespace quenvolta::CommandId
