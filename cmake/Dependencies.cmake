# Outside libraries the components link against, beside Qt.
# Each family adds what it needs here.

# System services: logind over D-Bus for logging off, xcb for the windows of other programs.
find_package(Qt6 6.4 REQUIRED COMPONENTS DBus)
find_package(PkgConfig REQUIRED)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)
target_link_libraries(QXTpack PRIVATE Qt6::DBus PkgConfig::XCB)
