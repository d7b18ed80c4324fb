// Digest and encodings that the server must be able to repeat or undo.
#pragma once

#include <string>
#include <string_view>

/// MD5 (RFC 1321) of the characters' codes in CP950. Each character takes one byte slot of the message and
/// counts one in its length; the 16 bits of a double-byte code run over into the slot behind it, combined by
/// OR. For single-byte text this is the standard digest. 32 hexadecimal digits in lower case.
std::string Md5Hex(std::string_view text);

/// Base64 with "+" for padding, rotated by a number that depends on its length. A text of fewer than four
/// characters comes back as it stands; a longer one gives its first four characters, the number as two
/// hexadecimal digits, and the rotated Base64. The text must be ASCII.
std::string Base64Encode(std::string_view text);

/// Packs a result page for `p_decode.asp`: codes of its characters in CP950, in Base64Encode, with three
/// check digits at the end.
std::string EncodeForServer(std::string_view text);
