#pragma once

#include <gtest/gtest.h>

#include "runtime/process_state.h"
#include "session/local_hub.h"
#include "tests/deploy/test_database.h"
#include "tests/support/loopback.h"
#include "tests/support/virtual_clock.h"
#include "util/digest.h"
#include "util/message.h"
#include "util/parameters.h"

namespace rvl::test {

// Messages stand in the tests with "|" for every NUL, each one ended by a line feed where there may be
// several.

inline Text Swap(Text text, char from, char to) {
    std::replace(text.begin(), text.end(), from, to);
    return text;
}

inline Text LoginOf(const Text& user, const Text& folders = "|L\\|D\\|M\\") {
    return "|LOGIN|" + GenerateRVLChecksum(user) + "|" + user + "|Name" + folders;
}

/// The service as the hub sees it: remembers what it is asked for.
struct FakeService : LocalHub::Service {
    explicit FakeService(DatabaseSurroundings surroundings) : database(std::move(surroundings)) {}

    bool IsServerConnected() const override { return linkUp; }
    void SendToServer(const Text& context, const Text& command, const std::vector<Text>& params) override {
        sent += Swap(MakeMessage(context, command, JoinParameters(params)), '\0', '|') + "\n";
    }
    void SendCurrentFrontends() override { ++reports; }
    Text PendingUpdatePath() const override { return pendingUpdate; }
    void MaybeUpgradeNow() override {
        if (onUpgradeCheck) std::exchange(onUpgradeCheck, {})();
    }
    LocalDatabase& Database() override { return database; }
    Text Sent() { return std::exchange(sent, ""); }

    LocalDatabase database;
    bool linkUp = false;
    int reports = 0;
    Text pendingUpdate, sent;
    std::function<void()> onUpgradeCheck;  ///< once
};

/// A local process.
struct LocalPeer : TestSocket {
    bool IsClosed() const { return sink.Has("Closed|"); }
    void Send(const Text& message) { socket->SendData(MakeFrame(Swap(message, '|', '\0'))); }

    /// What has been received since the last call, once everything has happened.
    Text Heard() {
        Settle();
        Text messages;
        FrameReader().Receive(std::exchange(sink.received, ""),
                              [&](const Text& message) { messages += Swap(message, '\0', '|') + "\n"; });
        return messages;
    }
    Text Says(const Text& message) {
        Send(message);
        return Heard();
    }
};

/// A hub with its own database on a port of the system's choice. The clock stands still.
class HubTest : public FolderTest {
 protected:
    using Peer = std::unique_ptr<LocalPeer>;

    HubTest() : service({Path("app\\RVLClient.exe"), Path("ProgramData\\")}), hub(service) {
        State().SuppressErrorDialog = true;
        std::filesystem::create_directories(HostFolder() / "app");
        CreateDatabaseFile(Path("app\\RVLClientTemplate.mdb"));
        ClearLog();
        hub.Open(0);
    }

    Peer Join(const Text& type = "") {
        auto peer = std::make_unique<LocalPeer>();
        peer->socket->Connect("127.0.0.1", hub.LocalPort());
        RunUntil([&] { return peer->sink.Has("3 Connected|"); });
        Settle();
        if (!type.empty()) peer->Says("|HELLO|RVL|" + type + "|1.0.0");
        return peer;
    }

    /// Logged in; what that brings about has been heard.
    Peer LogIn(const Text& type, const Text& user = "D\\ann") {
        Peer peer = Join(type);
        peer->Says(LoginOf(user));
        service.Sent();
        return peer;
    }

    static void Leave(Peer& peer) {
        peer.reset();
        Settle();
    }

    /// A row: FrontendID, FrontendVersionID, Username, FrontendName, FrontendLocation, FrontendFilename,
    /// MDWPath.
    void Deploy(const Text& values) {
        service.database.ExecuteSQL(
            "INSERT INTO DeployedFrontends (FrontendID, FrontendVersionID, Username, "
            "FrontendName, FrontendLocation, FrontendFilename, MDWPath) VALUES (" +
            values + ")");
    }

    VirtualClock clock;
    FakeService service;
    LocalHub hub;
    const Text client0 = "#0[127.0.0.1]: ", closing = client0 + "Closing connection: ";
};

}  // namespace rvl::test
