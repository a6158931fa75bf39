# Warnings are errors in everything that is written here; sanitizers where asked for.
add_library(loader_options INTERFACE)
target_include_directories(loader_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(loader_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
# GCC 12 warns of its own string concatenation (a false positive of -Wrestrict).
target_compile_options(loader_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(LOADER_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(LOADER_FUZZ)
  # The coverage hooks go into the code under test as well; the fuzz programs alone link the driver.
  # Without the tracing of comparisons: the look-ups of the store are linear, and it would cost most of the runs.
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-coverage=trace-cmp
                      -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  # The sanitizers do not see an index that leaves one array of a record for the next one; the library does.
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-fsanitize=address,undefined)
endif()

# Where the two systems differ, a layer has one file for each, side by side.
if(WIN32)
  set(LOADER_SYSTEM WINDOWS)
  # Names in UTF-16; Windows 10 and what came after it.
  target_compile_definitions(loader_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
else()
  set(LOADER_SYSTEM LINUX)
endif()

# loader_layer(NAME SOURCES... LINUX... WINDOWS... LINK LAYERS...): one layer of the logic; LINUX and WINDOWS are the
# sources and libraries that one of the systems has.
function(loader_layer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINUX;WINDOWS;LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES} ${ARG_${LOADER_SYSTEM}})
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_libraries(${name} PUBLIC loader_options ${ARG_LINK})
endfunction()
