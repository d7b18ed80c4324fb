#include "base/digest.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/sha256.h"

namespace base {
namespace {

TEST(Md5, IsTheStandardDigestOfSingleByteTextAndPacksDoubleByteCodesOverTheirNeighbours) {
  const std::pair<std::string, std::string> known[] = {
      {"", "d41d8cd98f00b204e9800998ecf8427e"},
      {"abc", "900150983cd24fb0d6963f7d28e17f72"},
      {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
      // A double-byte code runs into the slot after it by OR, and out of the word at its end.
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

// The digest of the digests of all lengths around the borders of blocks, made with `openssl md5`.
TEST(Md5, HoldsAroundTheBordersOfBlocks) {
  std::string mixture;
  std::string all;
  for (int length = 0; length <= 130; ++length) {
    all += SlotMd5(mixture);
    mixture += static_cast<char>(33 + length * 7 % 89);
  }
  EXPECT_EQ(SlotMd5(mixture.substr(0, 64)), "75fc343e12b56134aa8b51c300587f87");
  EXPECT_EQ(SlotMd5(all), "2c7833b8af59a30f3b939f0fc6b0b470");
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
