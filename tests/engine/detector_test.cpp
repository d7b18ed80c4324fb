// The detector's network against what its trainer computes, and weights that do not fit.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "engine/detector/network.h"
#include "engine/tables/hash.h"
#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

const std::filesystem::path kReference = std::filesystem::path(ENGINE_TEST_DATA) / "detector.tables";

// As trainers lay them out: 12 bytes of inputs, four of labels.
struct ReferenceRow {
  DetectorInput input;
  std::uint32_t labels = 0;
};
static_assert(sizeof(ReferenceRow) == 16);

std::vector<float> Outputs(const TableFile& tables) {
  const DetectorNetwork network(tables);
  const auto rows = tables.Array<ReferenceRow>("reference.inputs");
  std::vector<float> outputs;
  std::size_t at = 0;
  for (const std::uint32_t length : tables.Array<std::uint32_t>("reference.lengths")) {
    std::vector<DetectorInput> inputs;
    for (const ReferenceRow& row : rows.subspan(at, length)) inputs.push_back(row.input);
    at += length;
    for (const TokenOutput& token : network.Run(inputs)) {
      outputs.push_back(token.wrong);
      outputs.insert(outputs.end(), token.classes.begin(), token.classes.end());
      outputs.insert(outputs.end(), token.mends.begin(), token.mends.end());
    }
  }
  return outputs;
}

TEST(DetectorNetwork, ComputesWhatItsTrainerDoes) {
  const TableFile tables(kReference);
  const auto wanted = tables.Array<float>("reference.outputs");
  const auto outputs = Outputs(tables);
  ASSERT_EQ(outputs.size(), wanted.size());
  ASSERT_EQ(outputs.size(), 100U * (1 + kMistakeClassCount + kMendCount));
  for (std::size_t i = 0; i < outputs.size(); ++i) ASSERT_NEAR(outputs[i], wanted[i], 1e-3) << i;
}

TEST(DetectorNetwork, GivesTheSameBitsOnEveryMachine) {
  const auto outputs = Outputs(TableFile(kReference));
  const std::string_view bytes(reinterpret_cast<const char*>(outputs.data()), outputs.size() * sizeof(float));
  EXPECT_EQ(HashText(bytes), 13936724130707570688U);
}

TEST(DetectorNetwork, ExpIsCloseToTheLibraryAndNeverInfinite) {
  for (float x = -79; x < 79; x += 0.37F) EXPECT_NEAR(PortableExp(x) / std::exp(x), 1, 1e-6) << x;
  for (const float x : {-1e30F, -200.0F, 200.0F, 1e30F}) EXPECT_TRUE(std::isfinite(PortableExp(x))) << x;
  EXPECT_EQ(PortableSigmoid(0), 0.5F);
}

TEST(DetectorNetwork, RefusesWeightsThatDoNotFit) {
  const TableFile tables(kReference);
  const TempFolder folder;
  for (const char* damaged : {"detector.shape.numbers", "detector.word", "detector.b0.gates",
                              "detector.b1.distance", "detector.heads.bias"}) {
    TableWriter writer;
    for (const auto& [name, bytes] : tables.Sections())
      writer.AddBytes(name, name == damaged ? bytes.first(bytes.size() - 4) : bytes);
    writer.Write(folder / "damaged.tables");
    const TableFile file(folder / "damaged.tables");
    EXPECT_THROW(DetectorNetwork{file}, std::runtime_error) << damaged;
  }
}

}  // namespace
}  // namespace tolvex::test
