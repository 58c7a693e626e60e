# Writes a C++ source that holds the texts of the ready layouts.
# usage: cmake -D FOLDER=layouts -D OUT=ready_texts.cpp -P EmbedLayouts.cmake

file(GLOB_RECURSE files RELATIVE ${FOLDER} ${FOLDER}/*.toml)
list(SORT files)
set(body "")
foreach(file ${files})
  file(READ ${FOLDER}/${file} text)
  string(REGEX REPLACE "\\.toml$" "" name ${file})
  # A literal may be 65,536 bytes long at least; pieces side by side are one.
  string(LENGTH "${text}" length)
  set(pieces "")
  set(at 0)
  while(at LESS length)
    string(SUBSTRING "${text}" ${at} 8000 piece)
    string(APPEND pieces "\n     R\"layout(${piece})layout\"")
    math(EXPR at "${at} + 8000")
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
