# Outside libraries the components link against, beside Qt.
# Each family adds what it needs here.
find_package(PkgConfig REQUIRED)
# libmspack expands SZDD files for qxtLZCopyFile.
pkg_check_modules(MSPACK REQUIRED IMPORTED_TARGET libmspack)
target_link_libraries(QXTpack PRIVATE PkgConfig::MSPACK)

# System services: logind over D-Bus for logging off, xcb for the windows of other programs.
find_package(Qt6 6.4 REQUIRED COMPONENTS DBus)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)
target_link_libraries(QXTpack PRIVATE Qt6::DBus PkgConfig::XCB)

# Sound: Qt Multimedia plays WAV files (its GStreamer backend on Debian 12).
find_package(Qt6 6.4 REQUIRED COMPONENTS Multimedia)
target_link_libraries(QXTpack PRIVATE Qt6::Multimedia)
