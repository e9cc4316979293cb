# What a desktop wants to know about an installed program: an entry for its menus and a page for its catalogue.
# The icon comes from res/. The entry names the executable by its whole path where that is not one of the places
# that every desktop searches.
include(GNUInstallDirs)

if(CMAKE_INSTALL_PREFIX MATCHES "^/usr(/local)?$")
    set(KALMORA_EXECUTABLE kalmora)
else()
    set(KALMORA_EXECUTABLE ${CMAKE_INSTALL_FULL_BINDIR}/kalmora)
endif()
configure_file(${CMAKE_SOURCE_DIR}/res/desktop/kalmora.desktop.in
    ${CMAKE_BINARY_DIR}/org.kalmora.Kalmora.desktop @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/org.kalmora.Kalmora.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/res/desktop/kalmora.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo RENAME org.kalmora.Kalmora.metainfo.xml)
