# The version tests read real Windows PE files, built here with the MinGW cross tools from the
# resource scripts in data/: PE32+ and PE32 images, with and without version and icon resources.
find_program(QX_WINDRES64 x86_64-w64-mingw32-windres REQUIRED)
find_program(QX_MINGW64 x86_64-w64-mingw32-gcc REQUIRED)
find_program(QX_WINDRES32 i686-w64-mingw32-windres REQUIRED)
find_program(QX_MINGW32 i686-w64-mingw32-gcc REQUIRED)

set(_qx_pe_src ${dir}/data)
set(_qx_pe_out ${CMAKE_CURRENT_BINARY_DIR}/version-pe)
file(MAKE_DIRECTORY ${_qx_pe_out})
file(GLOB _qx_pe_icons ${_qx_pe_src}/*.ico)

# qx_pe(OUTPUT 32|64 [DLL] [RC script]): links the entry stub with the compiled script.
function(qx_pe output bits)
  cmake_parse_arguments(arg "DLL" "RC" "" ${ARGN})
  set(windres ${QX_WINDRES${bits}})
  set(cc ${QX_MINGW${bits}})
  # The 32-bit compiler decorates C names with an underscore.
  if(bits STREQUAL "32")
    set(entry _entry)
  else()
    set(entry entry)
  endif()
  set(objects)
  set(commands)
  set(depends ${_qx_pe_src}/entry.c)
  if(arg_RC)
    set(obj ${_qx_pe_out}/${output}.res.o)
    list(APPEND objects ${obj})
    list(APPEND depends ${_qx_pe_src}/${arg_RC} ${_qx_pe_icons})
    set(commands COMMAND ${windres} -c 65001 -I ${_qx_pe_src} ${_qx_pe_src}/${arg_RC} -O coff -o ${obj})
  endif()
  set(kind)
  if(arg_DLL)
    set(kind -shared)
  endif()
  add_custom_command(OUTPUT ${_qx_pe_out}/${output}
    ${commands}
    COMMAND ${cc} ${kind} -Os -s -nostdlib -Wl,-e,${entry} -o ${_qx_pe_out}/${output}
            ${_qx_pe_src}/entry.c ${objects}
    DEPENDS ${depends}
    VERBATIM)
  set_property(GLOBAL APPEND PROPERTY QX_PE_FILES ${_qx_pe_out}/${output})
endfunction()

qx_pe(known.exe 64 RC known.rc)
qx_pe(english.exe 32 RC english.rc)
qx_pe(notranslation.exe 64 RC notranslation.rc)
qx_pe(noversion.exe 64)
qx_pe(icons.dll 32 DLL RC icons.rc)
get_property(_qx_pe_files GLOBAL PROPERTY QX_PE_FILES)
add_custom_target(test_version_pe DEPENDS ${_qx_pe_files})

add_executable(test_version_appversion ${dir}/appversion/main.cpp)
target_link_libraries(test_version_appversion PRIVATE QXTpack)

add_dependencies(test_version test_version_pe test_version_appversion)
target_compile_definitions(test_version PRIVATE
  QX_PE_DIR="${_qx_pe_out}"
  QX_PE_DATA="${_qx_pe_src}"
  QX_APPVERSION_PROGRAM="$<TARGET_FILE:test_version_appversion>")
