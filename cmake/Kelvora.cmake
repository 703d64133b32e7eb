# What every target of the program shares: warnings, sanitizers, and how a library is cut.

add_library(kelvora_options INTERFACE)
target_compile_options(kelvora_options INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
if(KELVORA_SANITIZE)
  target_compile_options(kelvora_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all)
  target_link_options(kelvora_options INTERFACE -fsanitize=address,undefined)
endif()

# kelvora_library(NAME FOLDER [SOURCES ...] [LINK ...])
# A library of the sources under src/FOLDER, seen by those who link it, and by nobody else, as
# "FOLDER/Header.h". The include root of each library holds only its own folder: a layer cannot
# include what it does not link.
function(kelvora_library name folder)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  set(root ${CMAKE_BINARY_DIR}/include/${name})
  cmake_path(GET folder PARENT_PATH parent)
  file(MAKE_DIRECTORY ${root}/${parent})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
  if(ARG_SOURCES)
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${root})
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE kelvora_options)
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${root})
    target_link_libraries(${name} INTERFACE ${ARG_LINK})
  endif()
endfunction()
