# Outside libraries the components link against, beside Qt.
# Each family adds what it needs here.
find_package(PkgConfig REQUIRED)
# libmspack expands SZDD files for qxtLZCopyFile.
pkg_check_modules(MSPACK REQUIRED IMPORTED_TARGET libmspack)
target_link_libraries(QXTpack PRIVATE PkgConfig::MSPACK)
