#pragma once

#include "provider/data_folder.h"
#include "provider/management_class.h"
#include "provider/roles/role_lists.h"

namespace quenvolta
{

/// The methods of several classes that read and write the lists of accounts with a role. `data` must outlive the
/// classes.
namespace rolemethods
{

/// Quenvolta_Service: administrators and supervisors.
void AddToService(ManagementClass& service, DataFolder& data);
/// Quenvolta_QdfsService: replication partners.
void AddToQdfsService(ManagementClass& service, DataFolder& data);
/// Quenvolta_Repository: delegation and replication.
void AddToRepository(ManagementClass& repository, DataFolder& data);

} // namespace rolemethods

} // namespace quenvolta
