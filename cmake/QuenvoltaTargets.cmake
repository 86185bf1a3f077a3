# Targets of this project, and the rule of the house: a library links only what stands to its right.
#
# A library reaches another one's headers as "folder/file.h". The include root that makes this
# possible belongs to the folder alone (a directory holding one link, named as the folder), and is
# handed on only by linking, so an include that breaks the rule does not compile.

# The folders from the ground up. A library may link only those before it.
set(QUENVOLTA_ORDER
    platform foundation wmi model ui async accounts certificates updates
    repositories server dashboard snapin host)
# Those that do not follow the line.
set(QUENVOLTA_MAY_USE_ui foundation)
set(QUENVOLTA_MAY_USE_accounts async)
set(QUENVOLTA_MAY_USE_certificates async)
set(QUENVOLTA_MAY_USE_updates async)
set(QUENVOLTA_MAY_USE_provider platform foundation)

# Compiler settings that every target shares.
add_library(quenvolta_options INTERFACE)
target_compile_options(quenvolta_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
  -Woverloaded-virtual -Werror
  -Wno-maybe-uninitialized) # GCC 12 invents these for an optimised std::variant that holds a QString
target_compile_definitions(quenvolta_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_CONTEXTLESS_CONNECT QT_NO_FOREACH QT_NO_JAVA_STYLE_ITERATORS
  QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400
  QUENVOLTA_VERSION="${PROJECT_VERSION}")
if(QUENVOLTA_SANITIZE)
  target_compile_options(quenvolta_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(quenvolta_options INTERFACE -fsanitize=address,undefined)
endif()

# quenvolta_library(NAME USES other... [LINKS external...]): the static library of src/NAME.
function(quenvolta_library name)
  cmake_parse_arguments(ARG "" "" "USES;LINKS" ${ARGN})
  if(DEFINED QUENVOLTA_MAY_USE_${name})
    set(allowed ${QUENVOLTA_MAY_USE_${name}})
    foreach(used IN LISTS allowed)          # what is allowed brings what it may use itself
      list(FIND QUENVOLTA_ORDER ${used} last)
      list(SUBLIST QUENVOLTA_ORDER 0 ${last} below)
      list(APPEND allowed ${below})
    endforeach()
  else()
    list(FIND QUENVOLTA_ORDER ${name} place)
    if(place LESS 0)
      message(FATAL_ERROR "The folder src/${name} has no place in the order of the libraries")
    endif()
    list(SUBLIST QUENVOLTA_ORDER 0 ${place} allowed)
  endif()
  foreach(used IN LISTS ARG_USES)
    if(NOT used IN_LIST allowed)
      message(FATAL_ERROR "src/${name} must not depend on src/${used}")
    endif()
  endforeach()

  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
       "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  add_library(${name} STATIC ${sources})
  set(root "${CMAKE_BINARY_DIR}/include/${name}")
  file(MAKE_DIRECTORY "${root}")
  file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${root}/${name}" SYMBOLIC)
  target_include_directories(${name} PUBLIC "${root}")
  target_link_libraries(${name} PUBLIC ${ARG_USES} ${ARG_LINKS} PRIVATE quenvolta_options)
endfunction()

# quenvolta_test(NAME USES library... ): tests/NAME as one GoogleTest program; each test a ctest.
function(quenvolta_test name)
  cmake_parse_arguments(ARG "GUI" "TIMEOUT" "USES;DEPENDS" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 60)
  endif()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
       "${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.h")
  if(NOT sources)
    return()
  endif()
  add_executable(test_${name} ${sources})
  target_link_libraries(test_${name} PRIVATE ${ARG_USES} test_support quenvolta_options
                        $<IF:$<BOOL:${ARG_GUI}>,test_main_gui,test_main_core>)
  if(ARG_DEPENDS)
    add_dependencies(test_${name} ${ARG_DEPENDS})
  endif()
  gtest_discover_tests(test_${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT ${ARG_TIMEOUT} ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()
