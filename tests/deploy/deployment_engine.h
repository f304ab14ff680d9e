#pragma once

#include <algorithm>

#include "deploy/frontend_commands.h"
#include "deploy/frontend_report.h"
#include "platform/system_message.h"
#include "tests/deploy/test_database.h"
#include "tests/support/workstation.h"
#include "tests/util/recorded_errors.h"
#include "util/text_functions.h"

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

    void Close() { m_database.CloseDatabase(); }
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

/// What a statement gives to another program: rows as lines, columns apart by "|", Null as "-".
inline std::string Rows(const std::string& sql) {
    auto database = OtherConnection("C:\\app\\RVLClient.mdb");
    auto statement = database.Prepare(sql);
    std::string rows;
    while (statement.Step())
        for (int column = 0; column < statement.ColumnCount(); ++column) {
            const platform::SqliteValue value = statement.Column(column);
            rows += column > 0 ? "|" : "";
            rows += IsNull(value) ? "-" : TextOf(value);
            rows += column + 1 == statement.ColumnCount() ? "\n" : "";
        }
    return rows;
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

    /// Of the version's three files the second one could not be copied.
    void ExpectUncopied(int error) {
        EXPECT_EQ(
            std::exchange(engine.sent, {}),
            "GENERAL_ERROR:" + std::to_string(error) + ":" + StripTerminator(platform::SystemMessage(error)) +
                " while copying \"C:\\staging\\12\\b.mdb\" to \"C:\\fe\\3\\12\\b.mdb\":FRONTEND_DEPLOY|");
        EXPECT_FALSE(std::filesystem::is_regular_file(Host("fe/3/12/b.mdb"))) << error;
        EXPECT_EQ(ReadHostFile(Host("fe/3/12/a.mdb")) + ReadHostFile(Host("fe/3/12/Data/c.mdb")),
                  "a.mdbData\\c.mdb");
        EXPECT_NE(engine.Report().find("CURRENT_FRONTEND:3:12:DOM\\ann:3:2|"), Text::npos) << error;
        EXPECT_EQ(Rows("SELECT Filename FROM DeployedFrontendFiles f JOIN DeployedFrontends USING"
                       " (DeployedFrontendID) WHERE Username NOTNULL ORDER BY f.rowid"),
                  "a.mdb\nData\\c.mdb\n");
    }

    DeploymentEngine engine;
    RecordedErrors errors;
};

}  // namespace rvl::test
