#include "session/start_helper.h"

#include "runtime/log_file.h"
#include "runtime/spawn_process.h"
#include "runtime/system_information.h"

namespace rvl {

void StartHelperForService() {
    Log("Service requested the helper be started");
    SpawnProcess("\"" + Self() + "\" -service_helper");
}

}  // namespace rvl
