#include "engine/detector/network.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace tolvex {
namespace {

constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kInner = 128;  // of attention
constexpr std::size_t kAttentionHeads = 4;
constexpr std::size_t kHeadSize = kInner / kAttentionHeads;
constexpr int kFarthest = 40;  // distance between tokens that attention tells apart
constexpr std::size_t kOutputs = 1 + kMistakeClassCount + kMendCount;
constexpr std::size_t kTokensAtOnce = 4;
constexpr std::size_t kTile = 8;  // outputs whose sums are taken together

// Four sums in one register, which every machine that we build for has; each lane rounds as a float does.
using Lanes [[gnu::vector_size(16)]] = float;
constexpr std::size_t kLanes = 4;
constexpr std::size_t kVectors = kTile / kLanes;

Lanes Load(const float* from) {
  Lanes lanes;
  std::memcpy(&lanes, from, sizeof lanes);
  return lanes;
}

void Store(Lanes lanes, float* to) { std::memcpy(to, &lanes, sizeof lanes); }

std::span<const float> Floats(const TableFile& tables, const std::string& name, std::size_t count) {
  const auto floats = tables.Array<float>("detector." + name);
  if (floats.size() != count) throw std::runtime_error("damaged table detector." + name);
  return floats;
}

void SetRows(Activations& rows, std::span<const float> values) {
  for (std::size_t t = 0; t < rows.Tokens(); ++t) std::ranges::copy(values, rows.Row(t));
}

}  // namespace

// Cody and Waite's reduction to |r| <= ln 2 / 2, then a polynomial of degree 6.
float PortableExp(float x) {
  x = std::clamp(x, -80.0F, 80.0F);
  constexpr float kShift = 12582912.0F;  // 1.5 * 2^23: adding it rounds to a whole number
  const float n = (x * 1.44269504F + kShift) - kShift;
  const float r = (x - n * 0.693359375F) + n * 2.12194440e-4F;
  float p = 1.0F / 720;
  p = p * r + 1.0F / 120;
  p = p * r + 1.0F / 24;
  p = p * r + 1.0F / 6;
  p = p * r + 0.5F;
  p = p * r + 1.0F;
  p = p * r + 1.0F;
  const auto exponent = static_cast<std::uint32_t>(static_cast<std::int32_t>(n) + 127) << 23U;
  return p * std::bit_cast<float>(exponent);
}

float PortableSigmoid(float x) { return 1.0F / (1.0F + PortableExp(-x)); }

DenseLayer::DenseLayer(const TableFile& tables, const std::string& name, std::size_t inputs,
                       std::size_t outputs)
    : inputs_(inputs), outputs_(outputs), weights_((outputs + kTile - 1) / kTile * inputs * kTile) {
  const auto values = tables.Array<std::int8_t>("detector." + name);
  const auto scale = Floats(tables, name + ".scale", outputs);
  if (values.size() != inputs * outputs) throw std::runtime_error("damaged table detector." + name);
  for (std::size_t o = 0; o < outputs; ++o) {
    float* const tile = weights_.data() + o / kTile * inputs * kTile + o % kTile;
    for (std::size_t i = 0; i < inputs; ++i)
      tile[i * kTile] = static_cast<float>(values[o * inputs + i]) * scale[o];
  }
}

void DenseLayer::AddProduct(const Activations& from, Activations& to) const {
  std::size_t t = 0;
  for (; t + kTokensAtOnce <= from.Tokens(); t += kTokensAtOnce) AddTiles<kTokensAtOnce>(from, to, t);
  for (; t < from.Tokens(); ++t) AddTiles<1>(from, to, t);
}

// The sums of a tile stay in registers while all inputs are added.
template <std::size_t kTokens>
void DenseLayer::AddTiles(const Activations& from, Activations& to, std::size_t first) const {
  const float* weights = weights_.data();
  for (std::size_t o = 0; o < outputs_; o += kTile) {
    const std::size_t used = std::min(kTile, outputs_ - o);
    float edge[kTile] = {};
    Lanes sums[kTokens][kVectors];
    for (std::size_t t = 0; t < kTokens; ++t) {
      std::copy_n(to.Row(first + t) + o, used, edge);
      for (std::size_t v = 0; v < kVectors; ++v) sums[t][v] = Load(edge + v * kLanes);
    }
    for (std::size_t i = 0; i < inputs_; ++i, weights += kTile) {
      for (std::size_t t = 0; t < kTokens; ++t) {
        const float x = from.Row(first + t)[i];
        for (std::size_t v = 0; v < kVectors; ++v) sums[t][v] += x * Load(weights + v * kLanes);
      }
    }
    for (std::size_t t = 0; t < kTokens; ++t) {
      for (std::size_t v = 0; v < kVectors; ++v) Store(sums[t][v], edge + v * kLanes);
      std::copy_n(edge, used, to.Row(first + t) + o);
    }
  }
}

Norm::Norm(const TableFile& tables, const std::string& name, std::size_t width)
    : scale_(Floats(tables, name, 2 * width).first(width)),
      offset_(Floats(tables, name, 2 * width).last(width)) {}

Activations Norm::Apply(const Activations& rows) const {
  Activations normed(rows.Tokens(), rows.Width());
  const auto width = static_cast<float>(rows.Width());
  for (std::size_t t = 0; t < rows.Tokens(); ++t) {
    const float* const x = rows.Row(t);
    float sum = 0;
    for (std::size_t i = 0; i < rows.Width(); ++i) sum += x[i];
    const float mean = sum / width;
    float squares = 0;
    for (std::size_t i = 0; i < rows.Width(); ++i) squares += (x[i] - mean) * (x[i] - mean);
    const float factor = 1.0F / std::sqrt(squares / width + 1e-5F);
    float* const y = normed.Row(t);
    for (std::size_t i = 0; i < rows.Width(); ++i) y[i] = (x[i] - mean) * factor * scale_[i] + offset_[i];
  }
  return normed;
}

void DetectorNetwork::Recurrence::Apply(Activations& x) const {
  const std::size_t width = x.Width();
  const std::size_t count = x.Tokens();
  const Activations y = norm.Apply(x);
  Activations mixed(count, width);
  for (std::size_t t = 0; t < count; ++t) {
    float* const row = mixed.Row(t);
    for (std::size_t i = 0; i < width; ++i) row[i] = y.Row(t)[i] * around[width + i];
    for (std::size_t i = 0; t > 0 && i < width; ++i) row[i] += y.Row(t - 1)[i] * around[i];
    for (std::size_t i = 0; t + 1 < count && i < width; ++i)
      row[i] += y.Row(t + 1)[i] * around[2 * width + i];
  }
  Activations gated(count, 3 * width);
  SetRows(gated, bias);
  gates.AddProduct(mixed, gated);

  std::vector<float> state(width, 0.0F);
  const std::size_t half = width / 2;
  const auto step = [&](std::size_t t, std::size_t from, std::size_t to) {
    const float* const u = gated.Row(t);
    const float* const forget = u + width;
    const float* const reset = u + 2 * width;
    float* const row = x.Row(t);
    for (std::size_t i = from; i < to; ++i) {
      const float f = PortableSigmoid(forget[i]);
      state[i] = f * state[i] + (u[i] - f * u[i]);
      row[i] += PortableSigmoid(reset[i]) * (state[i] - row[i]);
    }
  };
  for (std::size_t t = 0; t < count; ++t) step(t, 0, half);
  for (std::size_t t = count; t > 0; --t) step(t - 1, half, width);
}

void DetectorNetwork::Attention::Apply(Activations& x) const {
  const std::size_t count = x.Tokens();
  Activations projected(count, 3 * kInner);
  qkv.AddProduct(norm.Apply(x), projected);
  Activations heard(count, kInner);
  const float factor = 1.0F / std::sqrt(static_cast<float>(kHeadSize));
  std::vector<float> weights(count);
  for (std::size_t head = 0; head < kAttentionHeads; ++head) {
    const float* const bias = distance.data() + head * (2 * kFarthest + 1) + kFarthest;
    for (std::size_t t = 0; t < count; ++t) {
      const float* const query = projected.Row(t) + head * kHeadSize;
      for (std::size_t s = 0; s < count; ++s) {
        const float* const key = projected.Row(s) + kInner + head * kHeadSize;
        float sum = 0;
        for (std::size_t i = 0; i < kHeadSize; ++i) sum += query[i] * key[i];
        const int apart = static_cast<int>(s) - static_cast<int>(t);
        weights[s] = sum * factor + bias[std::clamp(apart, -kFarthest, kFarthest)];
      }
      const float most = *std::ranges::max_element(weights);
      float total = 0;
      for (float& weight : weights) total += weight = PortableExp(weight - most);
      float* const row = heard.Row(t) + head * kHeadSize;
      for (std::size_t s = 0; s < count; ++s) {
        const float* const value = projected.Row(s) + 2 * kInner + head * kHeadSize;
        const float share = weights[s] / total;
        for (std::size_t i = 0; i < kHeadSize; ++i) row[i] += share * value[i];
      }
    }
  }
  out.AddProduct(heard, x);
}

DetectorNetwork::Rows::Rows(const TableFile& tables, const std::string& name, std::size_t rowWidth)
    : width(rowWidth),
      values(tables.Array<std::int8_t>("detector." + name)),
      scale(tables.Array<float>("detector." + name + ".scale")) {
  if (values.size() != scale.size() * width) throw std::runtime_error("damaged table detector." + name);
}

void DetectorNetwork::Rows::AddRow(std::size_t row, float* to) const {
  if (row >= scale.size()) throw std::runtime_error("the detector lacks an embedding");
  const std::int8_t* const from = values.data() + row * width;
  for (std::size_t i = 0; i < width; ++i) to[i] += static_cast<float>(from[i]) * scale[row];
}

std::size_t DetectorNetwork::Shape(const TableFile& tables, std::size_t at) {
  const auto numbers = tables.Array<std::uint32_t>("detector.shape.numbers");
  if (numbers.size() != 4 || numbers[0] != kVersion)
    throw std::runtime_error("another version of the detector");
  return numbers[at];
}

DetectorNetwork::DetectorNetwork(const TableFile& tables)
    : width_(Shape(tables, 1)),
      embedding_(Shape(tables, 2)),
      word_(tables, "word", embedding_),
      lemma_(tables, "lemma", embedding_),
      start_(tables, "start", embedding_),
      end_(tables, "end", embedding_),
      tag_(tables, "tag", embedding_),
      shape_(tables, "shape", embedding_),
      bits_(tables, "bits", embedding_),
      norm_(tables, "norm", embedding_),
      project_(tables, "project", embedding_, width_),
      projectBias_(Floats(tables, "project.bias", width_)),
      final_(tables, "final", width_),
      heads_(tables, "heads", width_, kOutputs),
      headsBias_(Floats(tables, "heads.bias", kOutputs)) {
  for (std::size_t at = 0; at < Shape(tables, 3); ++at)
    blocks_.push_back(ReadBlock(tables, std::string("b").append(std::to_string(at))));
}

DetectorNetwork::Block DetectorNetwork::ReadBlock(const TableFile& tables, const std::string& name) const {
  Norm norm(tables, name + ".norm", width_);
  if (!tables.Sections().contains("detector." + name + ".gates")) {
    return Attention{norm, DenseLayer(tables, name + ".qkv", width_, 3 * kInner),
                     DenseLayer(tables, name + ".out", kInner, width_),
                     Floats(tables, name + ".distance", kAttentionHeads * (2 * kFarthest + 1))};
  }
  return Recurrence{norm, Floats(tables, name + ".around", 3 * width_),
                    DenseLayer(tables, name + ".gates", width_, 3 * width_),
                    Floats(tables, name + ".bias", 3 * width_)};
}

Activations DetectorNetwork::Embed(const std::vector<DetectorInput>& inputs) const {
  Activations rows(inputs.size(), embedding_);
  for (std::size_t t = 0; t < inputs.size(); ++t) {
    const DetectorInput& input = inputs[t];
    float* const row = rows.Row(t);
    word_.AddRow(input.word, row);
    lemma_.AddRow(input.lemma, row);
    start_.AddRow(input.start, row);
    end_.AddRow(input.end, row);
    tag_.AddRow(input.tag, row);
    shape_.AddRow(input.shape, row);
    for (int bit = 0; bit < kBitCount; ++bit) {
      if ((input.bits >> bit & 1) != 0) bits_.AddRow(static_cast<std::size_t>(bit), row);
    }
  }
  return rows;
}

std::vector<TokenOutput> DetectorNetwork::Run(const std::vector<DetectorInput>& inputs) const {
  Activations x(inputs.size(), width_);
  SetRows(x, projectBias_);
  project_.AddProduct(norm_.Apply(Embed(inputs)), x);
  for (const Block& block : blocks_) {
    std::visit([&](const auto& layer) { layer.Apply(x); }, block);
  }
  Activations scores(inputs.size(), kOutputs);
  SetRows(scores, headsBias_);
  heads_.AddProduct(final_.Apply(x), scores);
  std::vector<TokenOutput> outputs(inputs.size());
  for (std::size_t t = 0; t < inputs.size(); ++t) {
    const float* const row = scores.Row(t);
    outputs[t].wrong = row[0];
    std::copy_n(row + 1, kMistakeClassCount, outputs[t].classes.begin());
    std::copy_n(row + 1 + kMistakeClassCount, kMendCount, outputs[t].mends.begin());
  }
  return outputs;
}

}  // namespace tolvex
