# Writes OUTPUT, a C++ source that defines tolvan::data::SYMBOL with the bytes of INPUT, as lists of numbers:
# no quoting rule to get wrong, no limit on the length of a literal.
file(READ ${INPUT} bytes HEX)
string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
file(WRITE ${OUTPUT} "#include <string_view>
namespace tolvan::data {
static constexpr char bytes[] = {${bytes}'\\0'};
extern const std::string_view ${SYMBOL};
const std::string_view ${SYMBOL}{bytes, sizeof bytes - 1};
}  // namespace tolvan::data
")
