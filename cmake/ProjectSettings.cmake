# Compiler settings that every target of the project shares.
add_library(project_settings INTERFACE)
target_include_directories(project_settings INTERFACE "${PROJECT_SOURCE_DIR}" "${PROJECT_BINARY_DIR}/generated")
target_compile_options(
    project_settings
    INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast)
# g++ 12 sees overlapping copies inside std::string's operator+ that cannot happen.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(project_settings INTERFACE -Wno-restrict)
endif()
if(ORVELLOS_SANITIZE)
    target_compile_options(project_settings INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(project_settings INTERFACE -fsanitize=address,undefined)
    if(ORVELLOS_FUZZ) # lets a fuzz target see which code of the libraries its input reaches
        target_compile_options(project_settings INTERFACE -fsanitize=fuzzer-no-link)
    endif()
endif()

# Adds a static library of every source file in the calling folder and the folders in it.
function(add_project_library name)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC project_settings ${ARGN})
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
endfunction()
