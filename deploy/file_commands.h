#pragma once

#include "deploy/server_request.h"

namespace rvl {

// The server's simple file-system commands; each checks its parameters and answers.
void CreateDirectoryCommand(const ServerRequest& request);  ///< CREATE_DIRECTORY
void MakeDirectoryCommand(const ServerRequest& request);    ///< MKDIR
void GetFileInfoCommand(const ServerRequest& request);      ///< GET_FILE_INFO
void GetFileMd5Command(const ServerRequest& request);       ///< GET_FILE_MD5

}  // namespace rvl
