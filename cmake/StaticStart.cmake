# Programs that have to start fast carry their libraries with them: each shared library costs the dynamic linker
# about a tenth of a millisecond. Where an archive is missing the shared library is used.

# Sets `result` to the archives of these libraries, or to nothing when one is missing.
function(find_archives result)
    set(archives)
    foreach(library ${ARGN})
        find_library(ARCHIVE_${library} "lib${library}.a")
        mark_as_advanced(ARCHIVE_${library})
        if(NOT ARCHIVE_${library})
            set(${result} "" PARENT_SCOPE)
            return()
        endif()
        list(APPEND archives "${ARCHIVE_${library}}")
    endforeach()
    set(${result} "${archives}" PARENT_SCOPE)
endfunction()

# Defines the library `name`, which stands for `shared` and, in programs with the property STATIC_START, for the
# archives of the libraries that follow.
function(add_archive_or_shared name shared)
    find_archives(archives ${ARGN})
    add_library(${name} INTERFACE)
    if(archives)
        set(static "$<BOOL:$<TARGET_PROPERTY:STATIC_START>>")
        target_link_libraries(${name} INTERFACE "$<IF:${static},${archives},${shared}>")
    else()
        target_link_libraries(${name} INTERFACE ${shared})
    endif()
endfunction()

# Adds a program of the sources in the folder `folder`, linked to be started fast.
function(add_fast_program name folder)
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp"
         "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.h")
    add_executable(${name} ${sources})
    set_target_properties(${name} PROPERTIES STATIC_START ON)
    target_link_libraries(${name} PRIVATE ${ARGN})
    target_link_options(${name} PRIVATE -Wl,--as-needed -Wl,--gc-sections)
    if(NOT ORVELLOS_SANITIZE)
        target_link_options(${name} PRIVATE -static-libstdc++ -static-libgcc)
    endif()
endfunction()

# Leaves the dynamic linker out altogether, which halves the start of a program that loads nothing at run time. The
# X library's look-up of host names then needs the C library of the build, which only matters for an X server on
# another machine; the linker's warning about that is kept quiet.
function(link_fully_static name)
    if(NOT ORVELLOS_SANITIZE)
        target_link_options(${name} PRIVATE -static -Wl,--no-warnings)
    endif()
endfunction()
