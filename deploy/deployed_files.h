#pragma once

#include "deploy/local_database.h"

namespace rvl {

/// Where the files of a row of DeployedFrontends lie, with a trailing backslash.
Text LocationOf(Recordset& version);

/// Deletes the recorded files of a row of DeployedFrontends with their rows, its main file and its icon, and
/// the folders that become empty, up to and without the location itself. What cannot be deleted stays on
/// the disk, unrecorded.
void RemoveDeployedFiles(LocalDatabase& database, Recordset& version);

}  // namespace rvl
