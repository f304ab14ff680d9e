#pragma once

#include "util/long_vector.h"

namespace rvl {

/// Path of MSACCESS.EXE of an Office major version (2, 7, 8, 9, 10, 11); empty when it is not installed.
Text FindAccessLocation(std::int32_t version);

/// Every known version that is installed, lowest first.
LongVector InstalledAccessVersions();

/// The program of the lowest version from this one on that is installed; empty when there is none.
Text GetClosestAccessVersion(std::int32_t version);

/// The version whose file format a database has, by its property "AccessVersion" ("08.50" is 9); 0 when it is
/// not known.
std::int32_t AccessVersionOfFormat(const Text& format);

/// The program that opens a database: the highest of the allowed versions that is installed. When any will do
/// (`allowed` is empty), the lowest one that knows the database's format, or the highest of all when the
/// format cannot be told. Empty when there is none. `allowed` is sorted ascending.
Text GetBestAccessPath(const Text& databasePath, const LongVector& allowed, LongVector installed);

}  // namespace rvl
