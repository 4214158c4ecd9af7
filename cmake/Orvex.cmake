# How every target of this project is built: one function per kind.
include(GenerateExportHeader)

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

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../lib")

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
    # The fuzz targets follow the branches of everything that they link.
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

# A host library: orvex_library(tqauth OUTPUT tqauth SOURCES … LINK Qt5::Core …), known to others as Host::tqauth.
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
endfunction()

# A static library inside the program: orvex_module(store SOURCES … LINK …).
function(orvex_module name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_CURRENT_BINARY_DIR})
  target_link_libraries(${name} PUBLIC ${arg_LINK})
  _orvex_common(${name})
endfunction()

# A plug-in of the client, built into build/plugins.
function(orvex_plugin name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} MODULE ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINK})
  set_target_properties(${name} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/plugins)
  _orvex_common(${name})
endfunction()

function(orvex_program name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINK})
  _orvex_common(${name})
endfunction()

# A test program of one subject: tests/tst_<name>.cpp, run offscreen with fixed locale, hash seed, style and time zone, in a
# home of its own.
function(orvex_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_executable(tst_${name} tst_${name}.cpp ${arg_SOURCES})
  target_link_libraries(tst_${name} PRIVATE Qt5::Test ${arg_LINK})
  set_target_properties(tst_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  _orvex_common(tst_${name})
  add_test(NAME ${name} COMMAND tst_${name})
  set(home ${PROJECT_BINARY_DIR}/tests/home/${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT $<IF:$<BOOL:${ORVEX_SANITIZE}>,900,120> ENVIRONMENT
    "XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_CACHE_HOME=${home}/cache;\
QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LANG=C.UTF-8;TZ=Europe/Moscow;QT_HASH_SEED=0;QT_STYLE_OVERRIDE=Fusion;QT_LOGGING_RULES=;\
ASAN_OPTIONS=fast_unwind_on_malloc=0;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0")
endfunction()
