# The Windows installation: beside the executable and its plug-ins, every DLL
# they load (Qt's and the MinGW run-time's, found by CMake in the binaries
# themselves rather than listed by hand) and the Qt plug-ins Qt loads by
# itself (the platform, the native style, TLS through Schannel).

# Cross-built on Linux, the binaries are read with MinGW's objdump.
if(CMAKE_CROSSCOMPILING)
    set(CMAKE_GET_RUNTIME_DEPENDENCIES_PLATFORM "windows+pe")
    set(CMAKE_GET_RUNTIME_DEPENDENCIES_TOOL "objdump")
    find_program(KESTREL_MINGW_OBJDUMP NAMES x86_64-w64-mingw32-objdump REQUIRED)
    set(CMAKE_GET_RUNTIME_DEPENDENCIES_COMMAND "${KESTREL_MINGW_OBJDUMP}")
endif()

# Where the DLLs are found: Qt's, and the compiler's own (beside the compiler
# on Windows, in the cross compiler's folders on Linux).
get_filename_component(kestrel_compiler_folder "${CMAKE_CXX_COMPILER}" DIRECTORY)
file(GLOB kestrel_dlls
    "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS}/Qt6*.dll"
    "${kestrel_compiler_folder}/lib*.dll"
    "/usr/lib/gcc/x86_64-w64-mingw32/*-posix/lib*.dll"
    "/usr/x86_64-w64-mingw32/lib/lib*.dll")
# CMake looks a Windows binary's DLLs up by their lower-case names, which a
# case-sensitive file system (a cross build on Linux) does not find: the
# candidates are copied under those names into a folder of the build.
set(kestrel_dll_folder "${CMAKE_CURRENT_BINARY_DIR}/runtime-dlls")
file(MAKE_DIRECTORY "${kestrel_dll_folder}")
foreach(dll IN LISTS kestrel_dlls)
    get_filename_component(name "${dll}" NAME)
    string(TOLOWER "${name}" lower_name)
    if(NOT EXISTS "${kestrel_dll_folder}/${lower_name}")
        file(COPY_FILE "${dll}" "${kestrel_dll_folder}/${lower_name}")
    endif()
endforeach()

install(RUNTIME_DEPENDENCY_SET kestrel_runtime_dlls
    DESTINATION "${KESTREL_INSTALL_APPDIR}"
    # Only Qt's and the compiler's: the system's own DLLs are Windows'.
    PRE_INCLUDE_REGEXES "^qt6" "^libstdc\\+\\+" "^libgcc_s" "^libwinpthread"
    PRE_EXCLUDE_REGEXES ".*"
    DIRECTORIES "${kestrel_dll_folder}")

# ffmpeg.exe, which the program copies into its data folder on the first
# start like the tool, and gpgv.exe, which checks the tool's release
# signatures: built by scripts/windows/build-deps-mingw.sh, statically, so
# that each runs alone wherever it lies. Also placed beside the executable in
# the build, which is then a working installation as on Linux.
set(KESTREL_WINDOWS_PIECES "" CACHE PATH "Folder with bin/ffmpeg.exe and bin/gpgv.exe for Windows")
if(KESTREL_WINDOWS_PIECES)
    foreach(program ffmpeg.exe gpgv.exe)
        set(source "${KESTREL_WINDOWS_PIECES}/bin/${program}")
        if(NOT EXISTS "${source}")
            message(FATAL_ERROR "KESTREL_WINDOWS_PIECES has no bin/${program}")
        endif()
        install(PROGRAMS "${source}" DESTINATION "${KESTREL_INSTALL_APPDIR}")
        file(COPY "${source}" DESTINATION "${PROJECT_BINARY_DIR}")
    endforeach()
else()
    message(WARNING "No KESTREL_WINDOWS_PIECES: the installation lacks ffmpeg.exe and gpgv.exe")
endif()

find_package(Qt6 REQUIRED COMPONENTS Network)
foreach(plugin IN ITEMS
        "platforms|Qt6::QWindowsIntegrationPlugin"
        "platforms|Qt6::QOffscreenIntegrationPlugin"
        "styles|Qt6::QWindowsVistaStylePlugin"
        "tls|Qt6::QSchannelBackendPlugin")
    string(REPLACE "|" ";" parts "${plugin}")
    list(GET parts 0 folder)
    list(GET parts 1 target)
    if(TARGET ${target})
        install(FILES "$<TARGET_FILE:${target}>" DESTINATION "${KESTREL_INSTALL_APPDIR}/${folder}")
    else()
        message(WARNING "Qt has no ${target}: the installation lacks its ${folder} plug-in")
    endif()
endforeach()
