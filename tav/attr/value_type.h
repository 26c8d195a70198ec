#pragma once

#include <string>
#include <string_view>

namespace tav::math {
template <class T>
class Vector;
template <class T>
class Matrix;
template <class T>
class Symbol;
}  // namespace tav::math

namespace tav::attr {

// The type of the values of an item or a container.
enum class ValueType : int {
  kNone = 0,  // of an empty handle
  kDouble = 1,
  kInt = 2,
  kSize = 3,  // unsigned long long
  kString = 4,
  kVector = 5,
  kMatrix = 6,
  kSymbol = 7,
  kName = 8,  // const char*: names of elements, kept by somebody who outlives the container
};

// What is known of a value type: its code, its reflection name and its spelling in signatures.
template <class T>
struct ValueTraits;

#define TAV_ATTR_VALUE_TYPE(type, code, name, spelling)     \
  template <>                                               \
  struct ValueTraits<type> {                                \
    static constexpr ValueType kCode = ValueType::code;     \
    static constexpr std::string_view kName = name;         \
    static constexpr std::string_view kSpelling = spelling; \
  }

TAV_ATTR_VALUE_TYPE(double, kDouble, "Float64", "double");
TAV_ATTR_VALUE_TYPE(int, kInt, "Int32", "int");
TAV_ATTR_VALUE_TYPE(unsigned long long, kSize, "UInt64", "unsigned __int64");
TAV_ATTR_VALUE_TYPE(std::string, kString, "String",
                    "class std::basic_string<char,struct std::char_traits<char>,class std::allocator<char> >");
TAV_ATTR_VALUE_TYPE(math::Vector<double>, kVector, "Vector_Float64", "class tav::math::Vector<double>");
TAV_ATTR_VALUE_TYPE(math::Matrix<double>, kMatrix, "Matrix_Float64", "class tav::math::Matrix<double>");
TAV_ATTR_VALUE_TYPE(math::Symbol<double>, kSymbol, "Symbol_Float64", "class tav::math::Symbol<double>");
TAV_ATTR_VALUE_TYPE(const char*, kName, "Name", "char const *");

#undef TAV_ATTR_VALUE_TYPE

}  // namespace tav::attr
