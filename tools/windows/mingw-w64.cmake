# 64-bit Windows, built with Debian's mingw-w64 in its flavour with the standard library's threads.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# One executable, and nothing else to install.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static")
set(CMAKE_EXE_LINKER_FLAGS_RELEASE_INIT "-s")
set(CMAKE_MODULE_LINKER_FLAGS_RELEASE_INIT "-s")

# The libraries are built when they are first asked for; those of GoogleTest with this file as well.
if(NOT DEFINED ENV{RVL_WINDOWS_LIBRARIES})
    execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/build-libraries OUTPUT_VARIABLE libraries
                    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(ENV{RVL_WINDOWS_LIBRARIES} ${libraries})
endif()
set(wxWidgets_CONFIG_EXECUTABLE $ENV{RVL_WINDOWS_LIBRARIES}/bin/wx-config CACHE FILEPATH "")

set(CMAKE_FIND_ROOT_PATH $ENV{RVL_WINDOWS_LIBRARIES} /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
