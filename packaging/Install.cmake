# What `cmake --install` puts where, and the Debian package made of it by CPack.
#
# The programs look for the shipped files in ../share/terravo/supporto, so an installed tree can be
# moved as a whole. Manual pages and changelogs are compressed without a time stamp: the same
# sources give the same bytes.

set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(documents ${CMAKE_INSTALL_DATAROOTDIR}/doc/terravo) # the name of the package, in small letters
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# A package must not look into the folders of the machine that built it.
option(TERRAVO_INSTALLED_FILES_ONLY "Never take the shipped files from the source tree" OFF)
if(TERRAVO_INSTALLED_FILES_ONLY)
    set_source_files_properties(${PROJECT_SOURCE_DIR}/src/app/settings/SupportFolder.cpp
        TARGET_DIRECTORY terravo_core
        PROPERTIES COMPILE_DEFINITIONS TERRAVO_SOURCE_SUPPORT_FOLDER="")
endif()

# Installs a file compressed, under its own name or another, with .gz added.
find_program(GZIP_PROGRAM gzip REQUIRED)
function(install_compressed file folder)
    cmake_path(GET file FILENAME name)
    if(ARGC GREATER 2)
        set(name ${ARGV2})
    endif()
    set(compressed ${PROJECT_BINARY_DIR}/packaging/${name}.gz)
    add_custom_command(OUTPUT ${compressed}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/packaging
        COMMAND ${GZIP_PROGRAM} -9nc ${file} > ${compressed}
        DEPENDS ${file} VERBATIM)
    add_custom_target(compressed-${name} ALL DEPENDS ${compressed})
    install(FILES ${compressed} DESTINATION ${folder})
endfunction()

install(TARGETS terravo terravo-batch RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# The programs look for it in ../lib/terravo, whatever the system's own folder of libraries is.
if(TARGET terravo_gis)
    install(TARGETS terravo_gis LIBRARY DESTINATION lib/terravo
        PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/supporto DESTINATION ${CMAKE_INSTALL_DATADIR}/terravo)

install_compressed(${packaging}/man/terravo.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_compressed(${packaging}/man/terravo-batch.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${documents} changelog)
install_compressed(${packaging}/changelog.Debian ${documents})
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${packaging}/copyright
    DESTINATION ${documents})
install(FILES ${packaging}/lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME terravo)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${documents})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/samples/ DESTINATION ${documents}/examples)

install(FILES ${packaging}/terravo.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${packaging}/io.github.terravo.Terravo.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${packaging}/terravo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES ${packaging}/terravo-batch.bash-completion
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME terravo-batch)
foreach(side 16 22 24 32 48 64 128 256)
    install(FILES ${packaging}/icons/${side}.png
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${side}x${side}/apps RENAME terravo.png)
endforeach()
install(FILES ${packaging}/icons/terravo.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME terravo)
set(CPACK_PACKAGE_VENDOR "Terravo developers")
set(CPACK_PACKAGE_CONTACT "Terravo developers <terravo@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The fonts are for who looks at an SVG file.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-liberation, qt6-translations-l10n")
# GDAL brings some hundred packages along: the programs do without it.
if(TERRAVO_GDAL_PACKAGE)
    string(APPEND CPACK_DEBIAN_PACKAGE_RECOMMENDS ", ${TERRAVO_GDAL_PACKAGE}")
    set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_BINARY_DIR}/packaging/CPackProject.cmake)
    file(WRITE ${CPACK_PROJECT_CONFIG_FILE}
        "set(SHLIBDEPS_EXECUTABLE ${packaging}/shlibdeps.sh)\n")
endif()
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "contour maps from scattered survey points")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "\
Terravo triangulates the points of a survey in plan, cuts the triangles at
equally spaced levels and draws contour lines or filled bands in a graduated
frame, without a grid in between. It shows the survey as a turning axonometric
picture and saves triangles and contours as vector files for CAD.
.
The package holds the program with windows, terravo, and a program for
scripts, terravo-batch, which needs no display.")
include(CPack)
