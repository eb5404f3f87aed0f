# Installation : en-têtes sous include/noyau/<sous-système>/, bibliothèque, paquet CMake
# (find_package(Noyau) → Noyau::noyau) et noyau.pc.
include(CMakePackageConfigHelpers)

install(TARGETS noyau EXPORT NoyauCibles
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY noyau/ ${PROJECT_BINARY_DIR}/genere/noyau/
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/noyau
        FILES_MATCHING PATTERN "*.h"
        PATTERN "detail" EXCLUDE)

set(dossier_cmake ${CMAKE_INSTALL_LIBDIR}/cmake/Noyau)
install(EXPORT NoyauCibles NAMESPACE Noyau:: DESTINATION ${dossier_cmake})
configure_package_config_file(cmake/NoyauConfig.cmake.in
    ${PROJECT_BINARY_DIR}/NoyauConfig.cmake INSTALL_DESTINATION ${dossier_cmake})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/NoyauConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/NoyauConfig.cmake
              ${PROJECT_BINARY_DIR}/NoyauConfigVersion.cmake
        DESTINATION ${dossier_cmake})

# Préfixe relatif au fichier .pc, pour que l'arbre installé reste déplaçable.
file(RELATIVE_PATH NOYAU_PC_PREFIXE /r/${CMAKE_INSTALL_LIBDIR}/pkgconfig /r)
string(REGEX REPLACE "/$" "" NOYAU_PC_PREFIXE "${NOYAU_PC_PREFIXE}")
list(TRANSFORM NOYAU_DEPENDANCES_QT PREPEND Qt5 OUTPUT_VARIABLE modules_pc)
list(JOIN modules_pc " " NOYAU_REQUIRES_PC)
configure_file(cmake/noyau.pc.in ${PROJECT_BINARY_DIR}/noyau.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/noyau.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
