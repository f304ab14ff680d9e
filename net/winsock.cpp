#include "net/winsock.h"

#include "platform/error.h"
#include "platform/socket_endpoint.h"

namespace rvl {
namespace {

int g_starts = 0;

[[noreturn]] void RaiseFatal(const char* description) {
    throw Error(kApplicationErrorBase, "Winsock", description);
}

}  // namespace

void StartWinsock() {
    if (platform::StartSocketLibrary() != 0) RaiseFatal("Error starting Winsock");
    ++g_starts;
}

void EndWinsock() {
    if (g_starts == 0) RaiseFatal("EndWinsock without StartWinsock");
    --g_starts;
    platform::EndSocketLibrary();
}

}  // namespace rvl
