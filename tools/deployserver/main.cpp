// A small deployment server for demonstrations, tests and administrators who try the client out.

#include <csignal>
#include <cstdio>
#include <exception>

#include "platform/event_loop.h"
#include "platform/process.h"
#include "runtime/process_state.h"
#include "tools/deployserver/deploy_server.h"
#include "util/handle_error.h"

namespace {

using namespace rvl;
using namespace rvl::deployserver;

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2 };

/// Errors that nobody else handles go where the person who started the server sees them.
class StandardErrorSink : public ErrorSink {
 public:
    void ReportError(TextView procedure, const ErrorRecord& record, bool reRaise) override {
        if (reRaise) throw Error(record);
        platform::WriteStandardError("deployserver: " + Text(procedure) + ": " + record.Description);
    }
};

extern "C" void OnStopSignal(int) {
    DeployServer::RequestStop();
}

int Print(const Text& text) {
    std::fputs(Utf8FromText(text).c_str(), stdout);
    return kDone;
}

int Run(const Options& options) {
    if (options.help) return Print(HelpText());
    if (options.version) return Print("deployserver " + VersionString() + "\n");
    std::signal(SIGTERM, OnStopSignal);
    std::signal(SIGINT, OnStopSignal);
    return DeployServer(options).Run();
}

std::vector<Text> Arguments(int argc, char** argv) try {
    return platform::ProgramWords(argc, argv);
} catch (const Error&) {
    throw WrongUsage{"an argument holds characters beyond ISO 8859-1"};
}

}  // namespace

int main(int argc, char** argv) {
    StandardErrorSink sink;
    InstallErrorSink(&sink);
    platform::SetEventErrorHandler([] { HandleError("EventLoop"); });
    try {
        return Run(ParseOptions(Arguments(argc, argv)));
    } catch (const WrongUsage& wrong) {
        platform::WriteStandardError("deployserver: " + wrong.reason + "\nTry 'deployserver --help'.");
        return kWrongUsage;
    } catch (const std::exception& error) {
        platform::WriteStandardError(Text("deployserver: ") + error.what());
        return kFailed;
    }
}
