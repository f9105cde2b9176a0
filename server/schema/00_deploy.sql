-- Which scripts of this folder tree a hospital has received, with the checksum of their text.
USE CLINICAL_AREA
GO

CREATE ROLE capd_user
GO

CREATE TABLE tbDeployedScript (
    ScriptName varchar(200) NOT NULL PRIMARY KEY,
    Checksum varchar(64) NOT NULL,
    DeployedAt datetime NOT NULL
)
GO
