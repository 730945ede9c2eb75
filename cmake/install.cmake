include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

install(TARGETS kvr EXPORT kvr_targets FILE_SET HEADERS)
if(TARGET kvr_static)
    install(TARGETS kvr_static)
endif()
if(TARGET kvrimage)
    install(TARGETS kvrimage EXPORT kvrimage_targets FILE_SET HEADERS FILE_SET made_headers)
endif()
if(TARGET kvrimage_static)
    install(TARGETS kvrimage_static)
endif()
if(TARGET kvrmem)
    install(TARGETS kvrmem)
    get_target_property(texts kvrmem KVRMEM_TEXTS)
    install(DIRECTORY ${texts}/man1 DESTINATION ${CMAKE_INSTALL_MANDIR})
    install(FILES ${texts}/bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME kvrmem)
    install(FILES ${texts}/zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions RENAME _kvrmem)
    install(FILES ${texts}/fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d RENAME kvrmem.fish)
    # The schemas of the JSON that the tool prints.
    install(DIRECTORY docs/schemas DESTINATION ${CMAKE_INSTALL_DATADIR}/kvr)
    # The form of a folder "pack/NAME/start" of vim and neovim.
    install(DIRECTORY editors/vim DESTINATION ${CMAKE_INSTALL_DATADIR}/kvr PATTERN doc/tags EXCLUDE)
    install(FILES editors/emacs/kvrmem.el DESTINATION ${CMAKE_INSTALL_DATADIR}/kvr/emacs)
endif()

set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/kvr)
configure_package_config_file(
    cmake/kvr-config.cmake.in kvr-config.cmake
    INSTALL_DESTINATION ${package_directory}
    NO_SET_AND_CHECK_MACRO)
# While the major version is 0, a minor version may break compatibility with the previous one.
set(compatibility SameMajorVersion)
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(compatibility SameMinorVersion)
endif()
write_basic_package_version_file(kvr-config-version.cmake COMPATIBILITY ${compatibility})
install(FILES ${PROJECT_BINARY_DIR}/kvr-config.cmake ${PROJECT_BINARY_DIR}/kvr-config-version.cmake
        DESTINATION ${package_directory})
install(EXPORT kvr_targets FILE kvr-targets.cmake NAMESPACE kvr:: DESTINATION ${package_directory})
# A separate file, for systems that have kvr without kvrimage.
if(TARGET kvrimage)
    install(EXPORT kvrimage_targets FILE kvrimage-targets.cmake NAMESPACE kvr:: DESTINATION ${package_directory})
endif()

# The .pc files derive the prefix from their own location, so that an installed tree can be moved as a whole.
set(pc_directory ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH pc_prefix ${pc_directory} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH pc_libdir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH pc_includedir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
configure_file(cmake/kvr.pc.in kvr.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kvr.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(TARGET kvrimage)
    # The shared library contains what it needs of kvr. The archive takes it from the archive of kvr.
    set(kvrimage_requires "Requires: kvr")
    if(BUILD_SHARED_LIBS)
        set(kvrimage_requires "Requires.private: kvr")
    endif()
    set(kvrimage_private_libraries "")
    if(KVR_BUILD_ELF)
        set(kvrimage_private_libraries "Libs.private: -lelf -lz")
        if(NOT BUILD_SHARED_LIBS)
            set(kvrimage_private_libraries "Libs.private: -lz")
            set(kvrimage_elf " -lelf")
        endif()
    endif()
    configure_file(cmake/kvrimage.pc.in kvrimage.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/kvrimage.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endif()

# The relative locations are those of the source tree, so that the links between the documents work.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs
        FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN api.md EXCLUDE)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} USE_SOURCE_PERMISSIONS)
