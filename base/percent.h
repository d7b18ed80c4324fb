// Percent coding (RFC 3986, section 2.1) of addresses and of posted forms.
#pragma once

#include <string>
#include <string_view>

namespace base {

/// A field of a posted form (application/x-www-form-urlencoded): a blank becomes "+", and all bytes but ASCII
/// letters, digits and the plain signs become "%2C" and the like. Browsers leave the four that are plain here
/// without a word.
std::string FormEncode(std::string_view bytes, std::string_view plainSigns = "*-._");

/// Percent-encodes only these signs.
std::string PercentEncode(std::string_view text, std::string_view signs);

/// The same for a value whose readers may know nothing of it: "%" stays as it is, unless `DecodeMarked` would
/// misread it.
std::string EncodeMarked(std::string_view text, std::string_view signs);
/// Reads what `EncodeMarked` has written for these signs. A text without any of their codes is as it was.
std::string DecodeMarked(std::string_view text, std::string_view signs);

/// Bytes of "%41" written out. A "%" without two hexadecimal digits after it means itself.
std::string PercentDecode(std::string_view text);

/// Percent-encodes what is not ASCII, from UTF-16 units. Units from 0x80 to 0xFFF give two bytes, larger ones
/// three; ASCII stays as it is.
std::string UrlEncodeUtf8(std::string_view text);

}  // namespace base
