#include "base/digest.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/sha256.h"

namespace base {
namespace {

struct Vector {
  std::string text, code;
};

// Signs from "!" to "y" in a fixed mixture.
std::string Mixture(std::size_t length) {
  std::string text;
  for (std::size_t i = 0; i < length; ++i) text += static_cast<char>(33 + i * 7 % 89);
  return text;
}

TEST(Md5, IsTheStandardDigestOfSingleByteText) {
  const Vector known[] = {{"", "d41d8cd98f00b204e9800998ecf8427e"},
                          {"a", "0cc175b9c0f1b6a831c399e269772661"},
                          {"abc", "900150983cd24fb0d6963f7d28e17f72"},
                          {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"}};
  for (const auto& [text, code] : known) EXPECT_EQ(SlotMd5(text), code) << text;
}

// Made with `openssl md5`.
TEST(Md5, HoldsAroundTheBordersOfBlocks) {
  const struct {
    std::size_t length;
    const char* digest;
  } known[] = {{1, "9033e0e305f247c0c3c80d0c7848c8b3"},   {4, "648a113742e0d9cf2e0bcf959c255d2d"},
               {54, "1eeacc6e66ce5d18eeba8bf442fa2901"},  {55, "d1ec9c5a2c9e54750122482fffc6a4c4"},
               {56, "dd99ca28ec0f9903154a3190fdd5f8e1"},  {57, "5d9cd64720f8b45e2b17ab1c7fba284f"},
               {63, "ac5e96c878224172d1ab3d3d77320f37"},  {64, "75fc343e12b56134aa8b51c300587f87"},
               {65, "1bf43b9a43dfd5ddd168d3019a3b8582"},  {119, "bbe640189856f0d81e6c086e45060059"},
               {120, "d5474b97296e9d553ab58aaa0b6f13c1"}, {121, "52080a4c782d763f1f1a1292dc39e7f9"},
               {127, "2f225d8327f835dd1ebb5b96a43334f4"}, {128, "cdbb8ce43e9cd2877e155bdb59ecc90a"},
               {129, "a4bdd2d9ab287c8e37e9bcf0920a4fda"}};
  for (const auto& [length, digest] : known) EXPECT_EQ(SlotMd5(Mixture(length)), digest) << length;
  std::string all;
  for (std::size_t length = 0; length <= 130; ++length) all += SlotMd5(Mixture(length));
  EXPECT_EQ(SlotMd5(all), "2c7833b8af59a30f3b939f0fc6b0b470");
}

// A double-byte code runs into the slot behind it by OR, and out of the word at its end.
TEST(Md5, PacksDoubleByteCodesOverTheirNeighbours) {
  const Vector known[] = {
      {"中文a", "1bb37b634f1f9d960d87775d387885d8"},   // as the bytes A4, A4|E5, E5|61
      {"abc中d", "b43ee1b54307603ce1fade26c1391775"},  // as "abc", A4, "d": the lead byte is lost
      {"中a", "f032159fb5b8e6673d463cde150bfae5"},     // as the bytes A4, A4|61
      {"é😀", "0d1b08c34858921bc7c662b228acb7ba"},
      {"中", "ec3a81d364364d19207d03cc36e0ebf3"},  // the lead byte covers the end bit
      {"他每天上學。他每天上學。他每天上學。他每天上學。他每天上學。他每天上學。他每天上學。他每天上學。"
       "他每天上學。他每天上學。他每天上學。",
       "33b4f5c89b8324187eb420c05fdb4f89"}};
  for (const auto& [text, code] : known) EXPECT_EQ(SlotMd5(text), code) << text;
}

// Worked out by another program.
TEST(RowHash, KeepsFieldsApart) {
  const struct {
    std::vector<std::string> fields;
    std::uint64_t hash;
  } rows[] = {{{}, 0xecba3df2c3383c52},
              {{""}, 0xe8568baeebbf355f},
              {{"ab", "c"}, 0xe08137d9e8b0f3d2},
              {{"a", "bc"}, 0xb8d08f1217c32e82},
              {{"2026-11-05", "中文"}, 0xc80959724edeca8f}};
  for (const auto& [fields, hash] : rows) {
    RowHash row;
    for (const auto& field : fields) row.Add(field);
    EXPECT_EQ(row.Value(), hash);
  }
}

TEST(Sha256, IsTheStandardDigestOfAllPieces) {
  constexpr std::string_view kAbc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
  Sha256 digits, bytes;
  for (Sha256* const digest : {&digits, &bytes}) {
    for (const char* const piece : {"a", "", "bc"}) digest->Add(piece);
  }
  EXPECT_EQ(digits.Digits(), kAbc);
  EXPECT_EQ(bytes.Bytes().substr(0, 4), "\xBA\x78\x16\xBF");
  EXPECT_EQ(bytes.Bytes().size(), Sha256::kSize);
}

}  // namespace
}  // namespace base
