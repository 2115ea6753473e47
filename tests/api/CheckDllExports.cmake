# Checks the export and import tables of VEKZOLBase.dll (cmake -P), as
# `objdump -p` shows them. Arguments: OBJDUMP, DLL, INCLUDE_DIR.
#
# - Every class declared `class VEKZOL_API Name` in the public headers is
#   exported: some exported symbol carries its mangled name, its
#   constructors are there where it declares any, its table of virtual
#   operations where it declares a virtual operation, and every static data
#   member it declares (`static ... _Name;`) is there. A class whose members
#   are all defined in its header has nothing to export and is only listed.
# - Nothing of the standard library, the compiler's runtime or the test
#   framework is exported.
# - The DLL imports from the system only (KERNEL32, msvcrt, OLEAUT32): the
#   GCC runtime and zlib are inside it.
execute_process(COMMAND "${OBJDUMP}" -p "${DLL}"
  RESULT_VARIABLE result OUTPUT_VARIABLE dump ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${OBJDUMP} -p ${DLL} failed (${result}): ${errors}")
endif()

# The name table: "\t[ 122] _ZN15VEKZOLGraphEdge11_RefCounterE".
string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table[^\n]*\n(.*)" table "${dump}")
set(table "${CMAKE_MATCH_1}")
string(REGEX MATCHALL "\\[ *[0-9]+\\] [^\n]+" rows "${table}")
set(exports)
foreach(row IN LISTS rows)
  string(REGEX REPLACE "^\\[ *[0-9]+\\] " "" name "${row}")
  list(APPEND exports "${name}")
endforeach()
list(LENGTH exports count)
if(count EQUAL 0)
  message(FATAL_ERROR "no exported names in ${DLL}")
endif()
string(REPLACE ";" "\n" export_text "${exports}")
set(export_text "\n${export_text}\n")

set(failures "")

# Requires an export that matches `regex` (one line of the table).
function(require what regex)
  if(NOT export_text MATCHES "\n${regex}\n")
    set(failures "${failures}\n  ${what}" PARENT_SCOPE)
  endif()
endfunction()

file(GLOB_RECURSE headers "${INCLUDE_DIR}/vekzol/*.h")
set(classes)
set(inline_classes)
foreach(header IN LISTS headers)
  file(STRINGS "${header}" lines)
  set(code "")
  foreach(line IN LISTS lines)
    if(NOT line MATCHES "^[ \t]*//")
      string(APPEND code "${line}\n")
    endif()
  endforeach()
  # CMake lists split at ";": the header's semicolons become "@".
  string(REPLACE ";" "@" code "${code}")
  string(REGEX MATCHALL "class VEKZOL_API [A-Za-z0-9_]+" declared "${code}")
  foreach(declaration IN LISTS declared)
    string(REPLACE "class VEKZOL_API " "" name "${declaration}")
    string(LENGTH "${name}" length)
    set(mangled "${length}${name}")
    list(APPEND classes "${name}")
    # The class body: from its head to the first line that closes a class.
    string(REGEX MATCH "class VEKZOL_API ${name}[^\n]*\n(.*)" rest "${code}")
    set(body "${CMAKE_MATCH_1}")
    string(FIND "${body}" "\n}@" end)
    if(end GREATER -1)
      string(SUBSTRING "${body}" 0 ${end} body)
    endif()
    # A class whose members are all defined in its body has nothing that
    # the DLL must carry: a host compiles those members itself.
    if(NOT body MATCHES "\\)[^{}@]*@" AND NOT body MATCHES "static |virtual ")
      list(APPEND inline_classes "${name}")
      continue()
    endif()
    require("${name}: any symbol" "[^\n]*${mangled}[^\n]*")
    # A declared constructor is "Name(" at the start of a declaration.
    if(body MATCHES "[\n ]${name}\\(")
      require("${name}: constructor" "_ZN${mangled}C[12]E[^\n]*")
    endif()
    if(body MATCHES "virtual ")
      require("${name}: table of virtual operations" "_ZTV${mangled}")
    endif()
    string(REGEX MATCHALL "static [^@(]* _[A-Za-z0-9_]+@" statics "${body}")
    foreach(static IN LISTS statics)
      string(REGEX REPLACE ".* (_[A-Za-z0-9_]+)@$" "\\1" member "${static}")
      string(LENGTH "${member}" member_length)
      require("${name}::${member}" "_ZN${mangled}${member_length}${member}E")
    endforeach()
  endforeach()
endforeach()

foreach(name IN LISTS exports)
  if(name MATCHES "^_ZN?K?St|^_ZNSa|^_ZN9__gnu_cxx|^_ZN7testing|^__|^pthread_|^_?Unwind_|^__cxa")
    set(failures "${failures}\n  not of the library: ${name}")
  endif()
endforeach()

string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${dump}")
foreach(import IN LISTS imports)
  string(REPLACE "DLL Name: " "" dll_name "${import}")
  string(TOUPPER "${dll_name}" dll_upper)
  if(NOT dll_upper MATCHES "^(KERNEL32|MSVCRT|OLEAUT32)\\.DLL$")
    set(failures "${failures}\n  imports ${dll_name}")
  endif()
endforeach()

if(failures)
  message(FATAL_ERROR "VEKZOLBase.dll:${failures}")
endif()
list(LENGTH classes class_count)
string(REPLACE ";" ", " import_list "${imports}")
string(REPLACE ";" ", " inline_list "${inline_classes}")
message(STATUS "${count} exported names cover ${class_count} classes (defined in their "
  "headers only: ${inline_list}); ${import_list}")
