-- The local deployment database. The build makes RVLClientTemplate.mdb of it, and the service copies that file
-- when a workstation has no database yet; the service itself adds the one row of Settings.
--
-- Texts compare without regard to case. The service widens NOCASE to all letters of ISO 8859-1, which the
-- sqlite3 program does not know, so no index may stand on a text.

CREATE TABLE Settings (
    DatabaseVersion INTEGER,    -- format version; Null counts as 1
    ServerAddress   TEXT COLLATE NOCASE,
    WorkstationUUID TEXT COLLATE NOCASE
) STRICT;

-- One row per front-end version known to this workstation (Username is Null: the template), and one per
-- deployment of a version to a user.
CREATE TABLE DeployedFrontends (
    DeployedFrontendID        INTEGER PRIMARY KEY AUTOINCREMENT,
    FrontendID                INTEGER,
    FrontendVersionID         INTEGER,
    Username                  TEXT COLLATE NOCASE,
    FrontendName              TEXT COLLATE NOCASE,
    FrontendLocation          TEXT COLLATE NOCASE,
    FrontendFilename          TEXT COLLATE NOCASE,
    AllowedAccessVersions     TEXT COLLATE NOCASE,
    MDWPath                   TEXT COLLATE NOCASE,
    FriendlyVersionNumber     TEXT COLLATE NOCASE,
    IconFile                  TEXT COLLATE NOCASE,
    DesktopIconPath           TEXT COLLATE NOCASE,
    MenuIconPath              TEXT COLLATE NOCASE,
    DestinationLocation       INTEGER,    -- 1 user profile, 2 Program Files, 3 custom
    CustomDestinationLocation TEXT COLLATE NOCASE,
    FileCount                 INTEGER
) STRICT;

CREATE TABLE DeployedFrontendFiles (
    DeployedFrontendID INTEGER,
    Filename           TEXT COLLATE NOCASE,
    FileSize           INTEGER,    -- bytes
    MD5Hash            TEXT COLLATE NOCASE
) STRICT;

CREATE INDEX DeployedFrontendFiles_DeployedFrontendID ON DeployedFrontendFiles (DeployedFrontendID);

CREATE TABLE UserPaths (
    FullUsername             TEXT COLLATE NOCASE,
    LocalSettingsAppDataPath TEXT COLLATE NOCASE,
    DesktopPath              TEXT COLLATE NOCASE,
    StartMenuPath            TEXT COLLATE NOCASE
) STRICT;
