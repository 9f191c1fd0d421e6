# Turns the file IN into a C++ source OUT defining `std::string_view VAR`,
# byte for byte (hex escapes, so any content survives).
file(READ ${IN} hex HEX)
string(LENGTH "${hex}" hex_length)
math(EXPR size "${hex_length} / 2")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${hex}")
file(WRITE ${OUT} "#include <string_view>\nnamespace {\nconst char data[] = {${bytes} 0};\n}\n"
     "extern const std::string_view ${VAR};\n"
     "const std::string_view ${VAR}(data, ${size});\n")
