// The detector's network: what the trained weights make of a sentence.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "engine/detector/input.h"
#include "engine/detector/labels.h"
#include "engine/tables/table_file.h"

namespace tolvex {

/// The network's outputs for one token: logits, without bound.
struct TokenOutput {
  float wrong = 0;
  std::array<float, kMistakeClassCount> classes = {};
  std::array<float, kMendCount> mends = {};
};

/// One row of channels for each token.
class Activations {
 public:
  Activations(std::size_t tokens, std::size_t width) : width_(width), values_(tokens * width) {}
  std::size_t Tokens() const { return values_.size() / width_; }
  std::size_t Width() const { return width_; }
  float* Row(std::size_t token) { return values_.data() + token * width_; }
  const float* Row(std::size_t token) const { return values_.data() + token * width_; }

 private:
  std::size_t width_;
  std::vector<float> values_;
};

/// A matrix of the file, rows of int8 with a factor each, as floats.
class DenseLayer {
 public:
  DenseLayer(const TableFile& tables, const std::string& name, std::size_t inputs, std::size_t outputs);

  /// Adds to each row of `to` the product with the row of `from`. Each sum is taken in the order of the
  /// inputs, so that it is the same on every machine.
  void AddProduct(const Activations& from, Activations& to) const;

 private:
  template <std::size_t kTokens>
  void AddTiles(const Activations& from, Activations& to, std::size_t first) const;

  std::size_t inputs_;
  std::size_t outputs_;
  std::vector<float> weights_;  // [tile of outputs][input][output in the tile]
};

/// Scale and offset after a row is brought to mean 0 and variance 1.
class Norm {
 public:
  Norm(const TableFile& tables, const std::string& name, std::size_t width);
  Activations Apply(const Activations& rows) const;

 private:
  std::span<const float> scale_;
  std::span<const float> offset_;
};

/// See databuild/detector/model.py, which trains what is read here.
class DetectorNetwork {
 public:
  /// Reads "detector.*" of a file that must outlive it. Throws std::runtime_error when its version or sizes
  /// do not fit.
  explicit DetectorNetwork(const TableFile& tables);

  std::vector<TokenOutput> Run(const std::vector<DetectorInput>& inputs) const;

 private:
  struct Recurrence {
    Norm norm;
    std::span<const float> around;  // three rows: weights of the token before, itself, the one after
    DenseLayer gates;
    std::span<const float> bias;
    void Apply(Activations& x) const;
  };
  struct Attention {
    Norm norm;
    DenseLayer qkv;
    DenseLayer out;
    std::span<const float> distance;
    void Apply(Activations& x) const;
  };
  using Block = std::variant<Recurrence, Attention>;

  // An embedding: rows of int8 with a factor each.
  struct Rows {
    Rows(const TableFile& tables, const std::string& name, std::size_t width);
    void AddRow(std::size_t row, float* to) const;
    std::size_t width;
    std::span<const std::int8_t> values;
    std::span<const float> scale;
  };

  static std::size_t Shape(const TableFile& tables, std::size_t at);
  Block ReadBlock(const TableFile& tables, const std::string& name) const;
  Activations Embed(const std::vector<DetectorInput>& inputs) const;

  std::size_t width_;
  std::size_t embedding_;
  Rows word_, lemma_, start_, end_, tag_, shape_, bits_;
  Norm norm_;
  DenseLayer project_;
  std::span<const float> projectBias_;
  std::vector<Block> blocks_;
  Norm final_;
  DenseLayer heads_;
  std::span<const float> headsBias_;
};

/// e to the power of x and the logistic function, of additions and products only: the same on every machine.
float PortableExp(float x);
float PortableSigmoid(float x);

}  // namespace tolvex
