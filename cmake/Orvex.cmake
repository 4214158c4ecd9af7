# One function per kind of target: how it is built and where it is installed. The build folder has the layout of the
# installed tree, so a program finds its libraries and plug-ins by the same relative paths in both.
include(GenerateExportHeader)
include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(ORVEX_PLUGIN_DIR ${CMAKE_INSTALL_LIBDIR}/orvex/plugins)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_BINDIR})
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR})
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
file(RELATIVE_PATH ORVEX_PLUGINS_FROM_BIN /${CMAKE_INSTALL_BINDIR} /${ORVEX_PLUGIN_DIR})

add_library(orvex_options INTERFACE)
target_compile_options(orvex_options INTERFACE
  -Wall -Wextra -Woverloaded-virtual -Wnon-virtual-dtor -Wsuggest-override $<$<BOOL:${ORVEX_WERROR}>:-Werror>)
target_compile_definitions(orvex_options INTERFACE
  QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_STRICT_ITERATORS
  QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050f00)
target_link_options(orvex_options INTERFACE $<$<NOT:$<BOOL:${ORVEX_SANITIZE}>>:-Wl,--no-undefined>)
if(ORVEX_SANITIZE)
  target_compile_options(orvex_options INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer
    -fno-sanitize-recover=undefined)
  target_link_options(orvex_options INTERFACE -fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    # The fuzz targets measure the coverage of all code that they link.
    target_compile_options(orvex_options INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(orvex_options INTERFACE -fsanitize=fuzzer-no-link)
  endif()
endif()

function(_orvex_common target)
  target_link_libraries(${target} PRIVATE orvex_options)
  if(ORVEX_TIDY)
    set_target_properties(${target} PROPERTIES CXX_CLANG_TIDY clang-tidy)
  endif()
endfunction()

# Installs a target that looks for libraries in the library folder, by a path relative to its own folder.
function(_orvex_install target folder)
  file(RELATIVE_PATH libraries /${folder} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
  install(TARGETS ${target} RUNTIME DESTINATION ${folder} LIBRARY DESTINATION ${folder})
endfunction()

# An installed host library: orvex_library(tqauth OUTPUT tqauth SOURCES … LINK Qt5::Core …), linked as Host::tqauth.
function(orvex_library name)
  cmake_parse_arguments(arg "" "OUTPUT" "SOURCES;LINK" ${ARGN})
  add_library(${name} SHARED ${arg_SOURCES})
  add_library(Host::${name} ALIAS ${name})
  if(arg_OUTPUT)
    set_target_properties(${name} PROPERTIES OUTPUT_NAME ${arg_OUTPUT})
  endif()
  generate_export_header(${name} EXPORT_FILE_NAME ${CMAKE_CURRENT_BINARY_DIR}/${name}_export.h)
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_CURRENT_BINARY_DIR})
  target_link_libraries(${name} PUBLIC ${arg_LINK})
  _orvex_common(${name})
  _orvex_install(${name} ${CMAKE_INSTALL_LIBDIR})
endfunction()

# A static library that is linked into programs and tests: orvex_module(store SOURCES … LINK …).
function(orvex_module name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_CURRENT_BINARY_DIR})
  target_link_libraries(${name} PUBLIC ${arg_LINK})
  _orvex_common(${name})
endfunction()

function(_orvex_plugin name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} MODULE ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINK})
  _orvex_common(${name})
endfunction()

# An installed plug-in of the client.
function(orvex_plugin name)
  _orvex_plugin(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${ORVEX_PLUGIN_DIR})
  _orvex_install(${name} ${ORVEX_PLUGIN_DIR})
endfunction()

# A plug-in that only a test loads, in a folder of the test's build folder.
function(orvex_test_plugin name)
  _orvex_plugin(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/testplugins)
endfunction()

# A program for development: a benchmark, a stress or a fuzz target. Not installed.
function(orvex_executable name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINK})
  _orvex_common(${name})
endfunction()

# An installed program.
function(orvex_program name)
  orvex_executable(${name} ${ARGN})
  _orvex_install(${name} ${CMAKE_INSTALL_BINDIR})
endfunction()

# A test program of one subject: tests/tst_<name>.cpp. It runs offscreen with a fixed locale, hash seed, style and time
# zone, and with its own folders for settings and data.
function(orvex_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  orvex_executable(tst_${name} SOURCES tst_${name}.cpp ${arg_SOURCES} LINK Qt5::Test ${arg_LINK})
  set_target_properties(tst_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  add_test(NAME ${name} COMMAND tst_${name})
  set(home ${PROJECT_BINARY_DIR}/tests/home/${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT $<IF:$<BOOL:${ORVEX_SANITIZE}>,900,120> ENVIRONMENT
    "XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_CACHE_HOME=${home}/cache;\
QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LANG=C.UTF-8;TZ=Europe/Moscow;QT_HASH_SEED=0;QT_STYLE_OVERRIDE=Fusion;QT_LOGGING_RULES=;\
ASAN_OPTIONS=fast_unwind_on_malloc=0;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0")
endfunction()
