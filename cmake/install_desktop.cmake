# What a desktop wants to know about an installed program: an entry for its menus and a page for its catalogue.
# The icon comes from res/. The entry is written when the prefix is finally known, at installing; it names the
# executable by its whole path where that is not one of the places that every desktop searches.
include(GNUInstallDirs)

install(CODE "
    set(entry \"${CMAKE_BINARY_DIR}/org.kalmora.Kalmora.desktop\")
    set(KALMORA_EXECUTABLE kalmora)
    if(NOT CMAKE_INSTALL_PREFIX MATCHES \"^/usr(/local)?/?$\")
        set(KALMORA_EXECUTABLE \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/kalmora\")
    endif()
    configure_file(\"${CMAKE_SOURCE_DIR}/res/desktop/kalmora.desktop.in\" \"\${entry}\" @ONLY)
    file(INSTALL \"\${entry}\" DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/applications\")
")
install(FILES ${CMAKE_SOURCE_DIR}/res/desktop/kalmora.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo RENAME org.kalmora.Kalmora.metainfo.xml)
