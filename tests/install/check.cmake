# Installs the build into a scratch prefix, as a user would, and checks what the prefix gives:
# the programs and the Designer plugin run from it in a clean environment (no LD_LIBRARY_PATH,
# nothing of the build tree), and an outside project builds against it.
# Called with -DBUILD_DIR=... -DSOURCE_DIR=... -DWORK_DIR=... -DDESIGNER=ON|OFF -DVERSION=x.y.z
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix}
                RESULT_VARIABLE rc OUTPUT_QUIET)
if(rc)
  message(FATAL_ERROR "install failed")
endif()
file(MAKE_DIRECTORY ${WORK_DIR}/home)

# Runs a command with only a home directory and the system PATH in its environment; sets
# out, err and rc in the caller.
function(run_clean)
  execute_process(COMMAND env -i HOME=${WORK_DIR}/home PATH=/usr/bin:/bin ${ARGN}
                  WORKING_DIRECTORY ${WORK_DIR} RESULT_VARIABLE _rc OUTPUT_VARIABLE _out
                  ERROR_VARIABLE _err)
  set(out "${_out}" PARENT_SCOPE)
  set(err "${_err}" PARENT_SCOPE)
  set(rc "${_rc}" PARENT_SCOPE)
endfunction()

# Everything installed that loads the library finds it relative to itself.
file(GLOB elf_files ${prefix}/bin/* ${prefix}/lib*/qt6/plugins/designer/*.so)
foreach(f IN LISTS elf_files)
  execute_process(COMMAND readelf -d ${f} OUTPUT_VARIABLE dynamic)
  string(REGEX MATCH "R(UN)?PATH\\)[^\n]*\\[([^]]*)\\]" found "${dynamic}")
  if(NOT CMAKE_MATCH_2 MATCHES "^\\$ORIGIN/[./a-z0-9_-]*$")
    message(FATAL_ERROR "${f} has the run path '${CMAKE_MATCH_2}', not one relative to itself")
  endif()
endforeach()

run_clean(${prefix}/bin/qxtool --version)
if(rc OR NOT out MATCHES "^qxtool [0-9]+\\.[0-9]+\\.[0-9]+\n$" OR NOT err STREQUAL "")
  message(FATAL_ERROR "installed qxtool --version: exit ${rc}, printed '${out}' and '${err}'")
endif()

run_clean(${prefix}/bin/qxdemo --screenshot ${WORK_DIR}/gallery.png)
file(SIZE ${WORK_DIR}/gallery.png shot_size)
if(rc OR shot_size LESS 1000)
  message(FATAL_ERROR "installed qxdemo --screenshot: exit ${rc}, ${shot_size} bytes, '${err}'")
endif()

# The completion offers the commands, then each command's options.
set(completion ${prefix}/share/bash-completion/completions/qxtool)
# (No semicolons: CMake would split the script at them.)
run_clean(bash -c "PATH=${prefix}/bin:$PATH
  source ${completion}
  complete_words() {
    COMP_WORDS=(\"$@\")
    COMP_CWORD=$(($# - 1))
    _qxtool
    echo \"\${COMPREPLY[*]}\"
  }
  complete_words qxtool gi
  complete_words qxtool help k
  complete_words qxtool find /tmp --s
  complete -p qxtool")
if(rc OR NOT out MATCHES "^gif2bmp\nkillpath\n--subdirs\ncomplete .*-F _qxtool qxtool\n$")
  message(FATAL_ERROR "bash completion: exit ${rc}, printed '${out}' and '${err}'")
endif()

execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR}/consumer -B ${WORK_DIR}/build
                        -DCMAKE_PREFIX_PATH=${prefix} RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "find_package(QXTools) failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/build RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "the outside project did not build")
endif()
# The version macros give the project's version, as text and as Qt compares versions.
string(REPLACE "." ";" parts ${VERSION})
list(GET parts 0 major)
list(GET parts 1 minor)
list(GET parts 2 patch)
math(EXPR number "(${major} << 16) | (${minor} << 8) | ${patch}" OUTPUT_FORMAT HEXADECIMAL)
string(REGEX REPLACE "^0x" "" number ${number})
string(LENGTH ${number} digits)
while(digits LESS 6)
  string(PREPEND number 0)
  math(EXPR digits "${digits} + 1")
endwhile()
set(expected "a,b,c b ${VERSION} ${number}\n")
execute_process(COMMAND ${WORK_DIR}/build/consumer RESULT_VARIABLE rc OUTPUT_VARIABLE out)
if(rc OR NOT out STREQUAL expected)
  message(FATAL_ERROR "the outside program printed '${out}' and exited ${rc}")
endif()

# The same program built with nothing but pkg-config and the compiler.
file(GLOB pc_file ${prefix}/lib*/pkgconfig/QXTools.pc)
get_filename_component(pc_dir "${pc_file}" DIRECTORY)
execute_process(COMMAND env PKG_CONFIG_PATH=${pc_dir} pkg-config --cflags --libs QXTools
                RESULT_VARIABLE rc OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE)
if(rc)
  message(FATAL_ERROR "pkg-config QXTools: exit ${rc}, gave '${flags}'")
endif()
separate_arguments(flags UNIX_COMMAND "${flags}")
execute_process(COMMAND c++ ${SOURCE_DIR}/consumer/main.cpp ${flags} -Wl,-rpath,${pc_dir}/..
                        -o ${WORK_DIR}/pc-consumer RESULT_VARIABLE rc ERROR_VARIABLE err)
if(rc)
  message(FATAL_ERROR "the outside program did not build with pkg-config's flags: ${err}")
endif()
run_clean(${WORK_DIR}/pc-consumer)
if(rc OR NOT out STREQUAL expected)
  message(FATAL_ERROR "the pkg-config build printed '${out}' and exited ${rc}")
endif()

# The licence, the changelog and the README come with the prefix.
foreach(doc LICENSE CHANGELOG.md README.md)
  if(NOT EXISTS ${prefix}/share/doc/QXTools/${doc})
    message(FATAL_ERROR "${doc} is not installed under share/doc/QXTools")
  endif()
endforeach()

if(DESIGNER)
  file(GLOB plugin ${prefix}/lib*/qt6/plugins/designer/*.so)
  run_clean(QT_QPA_PLATFORM=offscreen ${WORK_DIR}/build/pluginload ${plugin})
  if(rc OR NOT out MATCHES "^QX Tools[|]TQX")
    message(FATAL_ERROR "the installed Designer plugin did not load: exit ${rc}, '${out}' '${err}'")
  endif()
  # Every entry names a header the prefix holds and has its picture at both sizes; what
  # Designer's widget box must show is page, class and default size of each.
  string(REGEX REPLACE "\n$" "" entries "${out}")
  string(REPLACE "\n" ";" entries "${entries}")
  set(expected_box "")
  foreach(entry IN LISTS entries)
    string(REPLACE "|" ";" fields "${entry}")
    list(GET fields 0 page)
    list(GET fields 1 class)
    list(GET fields 2 header)
    list(GET fields 3 sizes)
    list(GET fields 4 size)
    if(NOT EXISTS ${prefix}/include/${header})
      message(FATAL_ERROR "${class}: its include file ${header} is not installed")
    endif()
    if(NOT sizes STREQUAL "22x22,44x44")
      message(FATAL_ERROR "${class}: palette picture sizes '${sizes}', not 22 and 44 pixels")
    endif()
    string(APPEND expected_box "${page}|${class}|${size}\n")
  endforeach()

  # A real Designer session on a virtual X screen, with the installed plugin and the probe
  # plugin that reports Designer's widget box and takes the screenshot
  # (designer-widgetbox.png, kept here for looking at).
  find_program(designer_program designer PATHS /usr/lib/qt6/bin NO_DEFAULT_PATH REQUIRED)
  file(WRITE ${WORK_DIR}/home/.config/QtProject/Designer.conf
       "[newFormDialog]\nShowOnStartup=false\n")
  get_filename_component(plugin_dir ${plugin} DIRECTORY)
  get_filename_component(plugin_dir ${plugin_dir} DIRECTORY)
  run_clean(QT_PLUGIN_PATH=${plugin_dir}:${WORK_DIR}/build/probe-plugins
            QX_PROBE_REPORT=${WORK_DIR}/widgetbox.txt
            QX_PROBE_SHOT=${WORK_DIR}/designer-widgetbox.png
            timeout 180 xvfb-run -a -s "-screen 0 1280x1024x24" ${designer_program})
  if(rc)
    message(FATAL_ERROR "Designer under Xvfb: exit ${rc}, '${out}' '${err}'")
  endif()
  file(READ ${WORK_DIR}/widgetbox.txt box)
  if(NOT box STREQUAL expected_box)
    message(FATAL_ERROR "Designer's widget box holds\n${box}instead of\n${expected_box}")
  endif()
  file(SIZE ${WORK_DIR}/designer-widgetbox.png shot_size)
  if(shot_size LESS 2000)
    message(FATAL_ERROR "the widget box screenshot has only ${shot_size} bytes")
  endif()
endif()
