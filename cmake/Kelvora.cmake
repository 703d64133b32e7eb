# What every target of the program shares: warnings, sanitizers, and how a library is cut.

add_library(kelvora_options INTERFACE)
target_compile_options(kelvora_options INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
# GCC 12 sees overlapping copies in every optimised "text" + std::string.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(kelvora_options INTERFACE $<$<CONFIG:Release>:-Wno-restrict>)
endif()
if(KELVORA_SANITIZE)
  target_compile_options(kelvora_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all)
  target_link_options(kelvora_options INTERFACE -fsanitize=address,undefined)
  # The tests send tens of millions of bytes through these.
  set(busy_libraries kelvora_platform kelvora_comms kelvora_flash kelvora_bench)
endif()

# kelvora_precompiled(NAME LINK HEADERS...): what nearly all sources of a kind include, compiled once for all of them.
# Their own includes stay complete: .ci/alone.py reads each source by itself.
function(kelvora_precompiled name link)
  if(NOT KELVORA_PRECOMPILE)
    return()
  endif()
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled/${name}.cpp CONTENT "")
  add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/precompiled/${name}.cpp)
  target_link_libraries(${name} PRIVATE kelvora_options ${link})
  target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()

# kelvora_use_precompiled(TARGET NAME)
function(kelvora_use_precompiled target name)
  if(KELVORA_PRECOMPILE)
    target_precompile_headers(${target} REUSE_FROM ${name})
  endif()
endfunction()

# kelvora_library(NAME FOLDER [SOURCES ...] [HEADERS ...] [LINK ...])
# A library of the sources under src/FOLDER, seen by those who link it, and by nobody else, as
# "FOLDER/Header.h". The include root of each library holds links to its own headers alone: a layer cannot
# include what it does not link. Where two libraries share a folder the smaller one names its HEADERS; without
# them a library has all headers of the folder, subfolders left out.
function(kelvora_library name folder)
  cmake_parse_arguments(ARG "" "" "SOURCES;HEADERS;LINK" ${ARGN})
  set(source ${CMAKE_SOURCE_DIR}/src/${folder})
  if(ARG_HEADERS)
    list(TRANSFORM ARG_HEADERS PREPEND ${source}/ OUTPUT_VARIABLE headers)
  else()
    file(GLOB headers CONFIGURE_DEPENDS ${source}/*.h)
  endif()

  # Made anew, so that no link stays of a header that is gone.
  set(root ${CMAKE_BINARY_DIR}/include/${name})
  file(REMOVE_RECURSE ${root})
  file(MAKE_DIRECTORY ${root}/${folder})
  foreach(header IN LISTS headers)
    cmake_path(GET header FILENAME file)
    file(CREATE_LINK ${header} ${root}/${folder}/${file} SYMBOLIC)
  endforeach()

  if(ARG_SOURCES)
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${root})
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE kelvora_options)
    # The fuzzer grows its inputs by what they reach.
    if(KELVORA_FUZZ AND NOT folder MATCHES "forms$|qt$")
      target_compile_options(${name} PRIVATE -fsanitize-coverage=inline-8bit-counters,pc-table,trace-cmp,indirect-calls)
    endif()
    if(name IN_LIST busy_libraries)
      # What was precompiled is not optimised.
      target_compile_options(${name} PRIVATE -O1)
    elseif(folder MATCHES "forms$" OR "Qt6::Widgets" IN_LIST ARG_LINK)
      kelvora_use_precompiled(${name} kelvora_precompiled_forms)
    elseif(NOT folder MATCHES "qt$")
      kelvora_use_precompiled(${name} kelvora_precompiled_core)
    endif()
    # Windows have signals. Nothing that they include is generated, and none of it asks for the compiler: moc has
    # nothing to wait for.
    if(folder MATCHES "forms$")
      set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOGEN_ORIGIN_DEPENDS OFF AUTOMOC_COMPILER_PREDEFINES OFF)
    endif()
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${root})
    target_link_libraries(${name} INTERFACE ${ARG_LINK})
  endif()
endfunction()
