# target_windows_resources(<target> <description> [ICONS] [VERSION <a.b.c.d>]): what Windows shows of a program or a
# library, with the version of the project unless another is given; for programs the manifest, and the icons if asked
# for. Does nothing for other systems.
function(target_windows_resources target description)
    if(NOT WIN32)
        return()
    endif()
    cmake_parse_arguments(RESOURCES "ICONS" "VERSION" "" ${ARGN})
    set(version ${PROJECT_VERSION})
    if(RESOURCES_VERSION)
        set(version ${RESOURCES_VERSION})
    endif()
    string(REPLACE . , version_numbers ${version})
    set(here ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}.resources)
    set(dependencies ${folder}/program.rc)

    get_target_property(type ${target} TYPE)
    if(type STREQUAL EXECUTABLE)
        set(file_name ${target}.exe)
        set(file_type VFT_APP)
        set(manifest "1 RT_MANIFEST \"${here}/program.manifest\"")
        list(APPEND dependencies ${here}/program.manifest)
    else()
        set(file_name ${target}.dll)
        set(file_type VFT_DLL)
    endif()
    if(RESOURCES_ICONS)
        rvl_draw_icons(${folder} icons icon_files)
        list(APPEND dependencies ${icon_files})
    endif()

    configure_file(${here}/program.rc.in ${folder}/program.rc @ONLY)
    # Not as a source of the target: the compiler's warning options are nothing for the resource compiler.
    add_custom_command(
        OUTPUT ${folder}/program.obj
        COMMAND ${CMAKE_RC_COMPILER} -O coff ${folder}/program.rc ${folder}/program.obj
        DEPENDS ${dependencies}
        COMMENT "Compiling the resources of ${target}"
        VERBATIM)
    set_source_files_properties(${folder}/program.obj PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
    target_sources(${target} PRIVATE ${folder}/program.obj)
endfunction()

# Leaves the icons as lines of a resource script and as the files in which they are drawn. Their order is that of
# their indexes: the first is the program's, and the fifth is the one of the shortcuts to front ends that have none.
function(rvl_draw_icons folder lines_variable files_variable)
    find_package(Python3 3.9 REQUIRED COMPONENTS Interpreter)
    cmake_path(SET script NORMALIZE
        ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../../packaging/windows/icons/make_icons.py)
    set(number 0)
    foreach(name application service helper message frontend)
        math(EXPR number "${number} + 1")
        string(APPEND lines "${number} ICON \"${folder}/${name}.ico\"\n")
        list(APPEND files ${folder}/${name}.ico)
    endforeach()
    add_custom_command(
        OUTPUT ${files}
        COMMAND ${Python3_EXECUTABLE} ${script} ${folder}
        DEPENDS ${script}
        COMMENT "Drawing the icons"
        VERBATIM)
    set(${lines_variable} "${lines}" PARENT_SCOPE)
    set(${files_variable} "${files}" PARENT_SCOPE)
endfunction()
