# Read by cpack once for every generator it runs, after the settings from
# packaging/CMakeLists.txt.
#
# A Debian system keeps programs under /usr. Only the .deb gets that prefix:
# the source archive holds the repository's files at its top.
if(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
endif()

# The portable ZIP of the Windows build: the same files as the installer's,
# in a folder of the archive's name. Only where the program files lie
# differs; the program keeps its data and settings in the user's AppData
# folders as when installed.
if(CPACK_GENERATOR STREQUAL "ZIP")
    set(CPACK_PACKAGE_FILE_NAME "${CPACK_PACKAGE_FILE_NAME}-portable")
endif()
