# Writes the SPDX 2.3 document: cmake -D settings=FILE -P WriteSpdx.cmake, with what Spdx.cmake found.
cmake_policy(VERSION 3.22)
include(${settings})

# PATTERN|NAME|VARIABLE of the version|licence as the part's own makers declare it, as far as SPDX has words:
# Qt is to be had under a commercial licence, too.
set(linked_parts
  "^libQt[56](.+)[.]so|Qt|version_Qt|LGPL-3.0-only OR GPL-2.0-only OR GPL-3.0-only"
  "^libdbus-1[.]so|D-Bus|version_DBus|AFL-2.1 OR GPL-2.0-or-later"
  "^libicu.*[.]so|ICU|version_ICU|NOASSERTION"
  "^libutf8proc[.]so|utf8proc|version_utf8proc|MIT AND Unicode-DFS-2015"
  "^libstdc[+][+][.]so|libstdc++|version_libstdcxx|GPL-3.0-or-later WITH GCC-exception-3.1"
  "^libgcc_s[.]so|libgcc|version_libstdcxx|GPL-3.0-or-later WITH GCC-exception-3.1"
  "^(libc|libm|ld-linux.*)[.]so|C library||NOASSERTION")
# FILE that has it compiled in|NAME|VARIABLE|licence
set(compiled_in_parts
  "^(libTextManagerLibrary6?|textmanager)$|xxHash|version_xxHash|BSD-2-Clause"
  "^(textmanager|device-simulator)$|RapidJSON|version_RapidJSON|MIT")

set(packages "")
set(relationships "")
set(known_ids "")

# Adds a package, once, and sets id to its name in the document.
macro(add_package name version_info licence)
  string(REGEX REPLACE "[^A-Za-z0-9.]+" "-" id "SPDXRef-${name}")
  if(NOT id IN_LIST known_ids)
    list(APPEND known_ids ${id})
    string(APPEND packages "${separator}
    {
      \"SPDXID\": \"${id}\",
      \"name\": \"${name}\",
      \"versionInfo\": \"${version_info}\",
      \"downloadLocation\": \"NOASSERTION\",
      \"filesAnalyzed\": false,
      \"licenseConcluded\": \"NOASSERTION\",
      \"licenseDeclared\": \"${licence}\",
      \"copyrightText\": \"NOASSERTION\"
    }")
    set(separator ",")
  endif()
endmacro()

macro(add_relationship from type to)
  string(APPEND relationships ",
    { \"spdxElementId\": \"${from}\", \"relationshipType\": \"${type}\", \"relatedSpdxElement\": \"${to}\" }")
endmacro()

# Relates a file to the first part that its name, or the name of what it links, matches.
macro(add_part parts matched owner type)
  set(is_known FALSE)
  foreach(part ${${parts}})
    string(REGEX MATCH "^(.*)[|]([^|]*)[|]([^|]*)[|]([^|]*)$" part "${part}")
    set(pattern "${CMAKE_MATCH_1}")
    set(name "${CMAKE_MATCH_2}")
    set(part_version "${${CMAKE_MATCH_3}}")
    set(licence "${CMAKE_MATCH_4}")
    if("${matched}" MATCHES "${pattern}")
      if(name STREQUAL "Qt")
        string(APPEND name " ${CMAKE_MATCH_1}")
      endif()
      if(NOT part_version)
        set(part_version NOASSERTION)
      endif()
      add_package("${name}" "${part_version}" "${licence}")
      add_relationship(${owner} ${type} ${id})
      set(is_known TRUE)
    endif()
  endforeach()
endmacro()

foreach(file ${files})
  get_filename_component(file_name ${file} NAME)
  string(REGEX REPLACE "[.]so.*" "" own_name ${file_name})
  add_package("${own_name}" "${version}" NOASSERTION)
  set(own_id ${id})
  string(APPEND relationships "${described}
    { \"spdxElementId\": \"SPDXRef-DOCUMENT\", \"relationshipType\": \"DESCRIBES\", \"relatedSpdxElement\": \"${own_id}\" }")
  set(described ",")
  execute_process(COMMAND ${readelf} --dynamic --wide ${file} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "[][]" "|" dynamic "${dynamic}") # a list ends at no lone bracket
  string(REGEX MATCHALL "NEEDED[^|]*[|][^|]*" needed "${dynamic}")
  foreach(soname ${needed})
    string(REGEX REPLACE ".*[|]" "" soname "${soname}")
    if(soname MATCHES "^libTextManager")
      string(REGEX REPLACE "[.]so.*" "" other ${soname})
      add_relationship(${own_id} DEPENDS_ON SPDXRef-${other})
      continue()
    endif()
    add_part(linked_parts "${soname}" ${own_id} DEPENDS_ON)
    if(NOT is_known)
      add_package("${soname}" NOASSERTION NOASSERTION)
      add_relationship(${own_id} DEPENDS_ON ${id})
    endif()
  endforeach()
  add_part(compiled_in_parts "${own_name}" ${own_id} CONTAINS)
endforeach()

if(time)
  set(ENV{SOURCE_DATE_EPOCH} ${time})
endif()
string(TIMESTAMP created "%Y-%m-%dT%H:%M:%SZ" UTC)
string(UUID unique NAMESPACE 6ba7b811-9dad-11d1-80b4-00c04fd430c8 TYPE SHA1
  NAME "${package} ${version} ${created} ${packages} ${relationships}")
file(WRITE ${document} "{
  \"spdxVersion\": \"SPDX-2.3\",
  \"dataLicense\": \"CC0-1.0\",
  \"SPDXID\": \"SPDXRef-DOCUMENT\",
  \"name\": \"${package}-${version}\",
  \"documentNamespace\": \"urn:uuid:${unique}\",
  \"creationInfo\": { \"created\": \"${created}\", \"creators\": [\"Tool: ${package}-${version}\"] },
  \"packages\": [${packages}
  ],
  \"relationships\": [${relationships}
  ]
}
")
