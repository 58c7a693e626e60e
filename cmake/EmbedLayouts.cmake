# Writes a C++ source that holds the texts of the ready layouts.
# usage: cmake -D FOLDER=layouts -D OUT=ready_texts.cpp -P EmbedLayouts.cmake

file(GLOB_RECURSE files RELATIVE ${FOLDER} ${FOLDER}/*.toml)
list(SORT files)
set(body "")
foreach(file ${files})
  file(READ ${FOLDER}/${file} text)
  string(REGEX REPLACE "\\.toml$" "" name ${file})
  # A literal may be 65,536 bytes long at least; pieces side by side are one. Each ends with a line, so
  # that no character stands in two.
  string(LENGTH "${text}" length)
  set(pieces "")
  set(at 0)
  while(at LESS length)
    string(SUBSTRING "${text}" ${at} 8000 piece)
    math(EXPR left "${length} - ${at}")
    if(left GREATER 8000)
      string(FIND "${piece}" "\n" end REVERSE)
      math(EXPR end "${end} + 1")
      string(SUBSTRING "${piece}" 0 ${end} piece)
    endif()
    string(APPEND pieces "\n     R\"layout(${piece})layout\"")
    string(LENGTH "${piece}" end)
    math(EXPR at "${at} + ${end}")
  endwhile()
  string(APPEND body "    {\"${name}\",${pieces}},\n")
endforeach()
file(WRITE ${OUT} "#include \"layout/ready_texts.hpp\"

namespace campotipo::records {

const ReadyText *ready_texts() {
  static const ReadyText texts[] = {
${body}    {nullptr, nullptr},
  };
  return texts;
}

}  // namespace campotipo::records
")
