#pragma once

#include <algorithm>
#include <cstdio>

#include "deploy/frontend_commands.h"
#include "deploy/frontend_report.h"
#include "tests/deploy/test_database.h"
#include "tests/support/workstation.h"
#include "tests/util/recorded_errors.h"

namespace rvl::test {

inline const Text kAnn = "DOM\\ann", kBob = "DOM\\bob";

/// The deployment engine with what it sends to the server and what it tells the workstation.
class DeploymentEngine : private ServerReplies, private DeploymentAudience {
    LocalDatabase m_database{{"C:\\app\\RVLClient.exe", ""}};  // opened at the first use

 public:
    FrontendRegistration registration{m_database, *this};
    FrontendRemoval removal{m_database, *this};
    FrontendDeployment deployment{m_database, *this, removal, *this};
    FrontendReport report{m_database, *this};
    Text sent, told;

    Text Report() {
        report.SendCurrentFrontends();
        return std::exchange(sent, {});
    }

 private:
    void SendToServer(const Text& context, const Text& command, const std::vector<Text>& params) override {
        sent += context + command;
        for (const Text& param : params)
            sent += ":" + param;
        sent += "|";
    }
    void VersionDeployed(std::int32_t id) override { told += "deployed " + std::to_string(id) + "|"; }
    void VersionRemoved(std::int32_t id) override { told += "removed " + std::to_string(id) + "|"; }
};

inline std::string OutputOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
    std::string text;
    for (int character = 0; (character = fgetc(output.get())) != EOF;)
        text += static_cast<char>(character);
    return text;
}

/// The result of a statement as the sqlite3 program shows it: columns apart by "|", Null as "-".
inline std::string Rows(const std::string& sql) {
    return OutputOf("sqlite3 -nullvalue - '" + DriveC() + "/app/RVLClient.mdb' \"" + sql + "\"");
}

/// The host path of a path on drive C:, with or without the drive.
inline std::string Host(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return DriveC() + "/" + (path.starts_with("C:/") ? path.substr(3) : path);
}

inline bool IsThere(const std::string& path) {
    return std::filesystem::exists(Host(path));
}

/// A workstation without anything registered or deployed. Staging folders are C:\staging\<version id>.
class DeploymentTest : public testing::Test {
 protected:
    DeploymentTest() {
        EmptyDriveC();
        InstallDatabase();
    }
    ~DeploymentTest() override { EmptyDriveC(); }

    static void InstallDatabase() {
        std::filesystem::create_directory(Host("app"));
        CreateDatabaseFile("C:\\app\\RVLClient.mdb");
    }

    /// The user's own folders are C:\<name>\Local, Desktop and Menu.
    static void AddUser(const Text& username, const Text& name) {
        Text values = "'" + username + "'";
        for (const char* leaf : {"\\Local", "\\Desktop", "\\Menu"}) {
            std::filesystem::create_directories(Host(name + leaf));
            values += ", 'C:\\" + name + leaf + "\\'";
        }
        Rows("INSERT INTO UserPaths VALUES (" + values + ")");
    }

    /// A version of front end 3 that goes to C:\fe\3\<id>\ and has two shortcuts.
    static FrontendVersion Version(std::int32_t id) {
        FrontendVersion version;
        version.FrontendID = 3;
        version.FrontendVersionID = id;
        version.FrontendName = "Orders";
        version.FrontendLocation = "C:\\staging\\" + std::to_string(id);
        version.FrontendFilename = "a.mdb";
        version.IconFile = "Res\\i.ico";
        version.DesktopIconPath = "Orders";
        version.MenuIconPath = "Business\\Orders";
        version.DestinationLocation = 3;
        version.CustomDestinationLocation = "C:\\fe";
        version.FileCount = 3;
        return version;
    }

    /// Announces the version and confirms its files, whose content is their name some times over.
    void Register(const FrontendVersion& version,
                  const std::vector<Text>& files = {"a.mdb", "b.mdb", "Data\\c.mdb"}, int times = 1) {
        engine.registration.AddFrontendVersion(version);
        WriteHostFile(Host(version.FrontendLocation + "\\" + version.IconFile), "icon");
        for (const Text& name : files) {
            std::string content;
            for (int time = 0; time < times; ++time)
                content += name;
            WriteHostFile(Host(version.FrontendLocation + "\\" + name), content);
            engine.registration.AddFrontendVersionFile(version.FrontendVersionID, name);
        }
    }

    void Deploy(std::int32_t id, const Text& username = kAnn) {
        engine.deployment.FrontendVersionDeploy(id, username, true);
    }

    DeploymentEngine engine;
    RecordedErrors errors;
};

}  // namespace rvl::test
