#pragma once

namespace rvl {

/// Loads the product's tools library into State().Tools, registering the components once if needed. The
/// process goes on without it; errors are never reported.
void LoadTools();

/// Registers the components the program uses, from beside the executable or else the system folder.
void RegisterDependancies();

}  // namespace rvl
