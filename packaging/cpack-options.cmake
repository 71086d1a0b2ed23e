# Read by cpack once for every generator it runs, after the settings from
# packaging/CMakeLists.txt.
#
# A Debian system keeps programs under /usr. Only the .deb gets that prefix:
# the source archive holds the repository's files at its top.
if(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
endif()
