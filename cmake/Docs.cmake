# The API reference: "cmake --build build --target docs" writes build/docs/html/index.html from
# the public headers, with the README as the entry page. Not part of the default build or the
# tests; without Doxygen there is no docs target.
find_package(Doxygen OPTIONAL_COMPONENTS dot)
if(NOT DOXYGEN_FOUND)
  return()
endif()
set(DOXYGEN_PROJECT_NAME "QXTools for Qt")
set(DOXYGEN_PROJECT_NUMBER ${PROJECT_VERSION})
set(DOXYGEN_PROJECT_BRIEF "Qt 6 widgets, non-visual components and utility functions")
set(DOXYGEN_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/docs)
set(DOXYGEN_USE_MDFILE_AS_MAINPAGE ${CMAKE_SOURCE_DIR}/README.md)
set(DOXYGEN_FILTER_PATTERNS "*.h=${CMAKE_SOURCE_DIR}/cmake/doxygen-comments.awk")
set(DOXYGEN_DISTRIBUTE_GROUP_DOC YES)
# The first sentence of a comment is the member's summary in the lists.
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
set(DOXYGEN_QT_AUTOBRIEF YES)
set(DOXYGEN_EXTRACT_ALL YES)
set(DOXYGEN_EXTRACT_STATIC YES)
set(DOXYGEN_EXTRACT_PRIVATE NO)
set(DOXYGEN_HIDE_UNDOC_RELATIONS NO)
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_EXPAND_ONLY_PREDEF YES)
set(DOXYGEN_PREDEFINED "QXT_EXPORT=" "Q_OBJECT=" "Q_GADGET=" "Q_ENUM(x)=" "Q_PROPERTY(x)=")
set(DOXYGEN_WARN_IF_UNDOCUMENTED NO)
set(DOXYGEN_QUIET YES)
set(DOXYGEN_GENERATE_TREEVIEW YES)
set(DOXYGEN_SORT_MEMBER_DOCS NO)
if(TARGET Doxygen::dot)
  set(DOXYGEN_HAVE_DOT YES)
  set(DOXYGEN_CLASS_GRAPH YES)
  set(DOXYGEN_COLLABORATION_GRAPH NO)
  set(DOXYGEN_INCLUDE_GRAPH NO)
  set(DOXYGEN_INCLUDED_BY_GRAPH NO)
  set(DOXYGEN_DOT_IMAGE_FORMAT svg)
endif()
doxygen_add_docs(docs ${QX_PUBLIC_HEADERS} ${CMAKE_SOURCE_DIR}/README.md
                 ${CMAKE_SOURCE_DIR}/CHANGELOG.md
                 WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
                 COMMENT "API reference into ${CMAKE_BINARY_DIR}/docs/html")

# The same headers once more, with a warning for every public member that has no comment and a
# failure at the end if there was one; the tests run it ("docs_complete"), so a member added
# without its line of documentation is caught. Only the quick XML output is written.
set(DOXYGEN_EXTRACT_ALL NO)
set(DOXYGEN_WARN_IF_UNDOCUMENTED YES)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
set(DOXYGEN_GENERATE_HTML NO)
set(DOXYGEN_GENERATE_XML YES)
set(DOXYGEN_HAVE_DOT NO)
set(DOXYGEN_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/docs-check)
doxygen_add_docs(docs_check ${QX_PUBLIC_HEADERS} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
                 COMMENT "Checking that every public member is documented")
