include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# Three components, which are the three Debian packages too: library, development, tool.
install(
    TARGETS kvr
    EXPORT kvr_targets
    RUNTIME COMPONENT library
    LIBRARY COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development
    FILE_SET HEADERS COMPONENT development)
if(TARGET kvr_static)
    install(TARGETS kvr_static ARCHIVE COMPONENT development)
endif()
if(TARGET kvrmem)
    install(TARGETS kvrmem COMPONENT tool)
    get_target_property(texts kvrmem KVRMEM_TEXTS)
    set(shared_data ${CMAKE_INSTALL_DATADIR})
    install(FILES ${texts}/man DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 RENAME kvrmem.1 COMPONENT tool)
    install(FILES ${texts}/bash DESTINATION ${shared_data}/bash-completion/completions RENAME kvrmem COMPONENT tool)
    install(FILES ${texts}/zsh DESTINATION ${shared_data}/zsh/site-functions RENAME _kvrmem COMPONENT tool)
    install(FILES ${texts}/fish DESTINATION ${shared_data}/fish/vendor_completions.d RENAME kvrmem.fish COMPONENT tool)
endif()

set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/kvr)
configure_package_config_file(
    cmake/kvr-config.cmake.in kvr-config.cmake
    INSTALL_DESTINATION ${package_directory}
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(kvr-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kvr-config.cmake ${PROJECT_BINARY_DIR}/kvr-config-version.cmake
        DESTINATION ${package_directory} COMPONENT development)
install(EXPORT kvr_targets FILE kvr-targets.cmake NAMESPACE kvr:: DESTINATION ${package_directory}
        COMPONENT development)

# kvr.pc finds the prefix from its own place, so that an installed tree can be moved as a whole.
set(pc_directory ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH pc_prefix ${pc_directory} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH pc_libdir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH pc_includedir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
configure_file(cmake/kvr.pc.in kvr.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kvr.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

install(FILES README.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
