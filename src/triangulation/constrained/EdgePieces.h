// Which line each constrained edge belongs to, while edges are divided.
//
// Data: pieces; each is an edge of the mesh, or was one and has been divided into others; the live
// ones are found by their ends. Method: a piece that is divided keeps the numbers of its parts, so
// a line that knows its first pieces finds its edges at the end, and lines that run along the same
// edge share its piece.
#pragma once

#include "util/Array1.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

namespace terravo {

using PieceNumber = std::uint32_t;
using PieceChain = std::vector<PieceNumber>;

/// The number of a line, or of nobody: a side that is only held.
using LineNumber = std::uint32_t;
inline constexpr LineNumber kNoLine = 0xFFFFFFFFU;

struct EdgePiece {
    Index from = 0;
    Index to = 0;
    LineNumber line = kNoLine; // the earliest that runs along it
    PieceChain parts;          // empty while it is an edge
};

class EdgePieces {
public:
    void Reserve(std::size_t count) {
        pieces_.reserve(count);
        live_.reserve(count);
    }

    /// The piece of an edge of the mesh, which is made when there is none.
    PieceNumber Claim(Index p, Index q, LineNumber line) {
        const auto [found, isNew] =
            live_.try_emplace(KeyOf(p, q), static_cast<PieceNumber>(pieces_.size()));
        if (isNew) {
            pieces_.push_back({p, q, line, {}});
        } else if (pieces_[found->second].line == kNoLine) {
            pieces_[found->second].line = line;
        }
        return found->second;
    }

    /// An edge that is no longer one, or soon will not be.
    /// @return its piece, whose parts are to be set.
    PieceNumber Retire(Index p, Index q) {
        const auto found = live_.find(KeyOf(p, q));
        assert(found != live_.end());
        const PieceNumber number = found->second;
        live_.erase(found);
        return number;
    }
    void SetParts(PieceNumber piece, PieceChain parts) { pieces_[piece].parts = std::move(parts); }

    [[nodiscard]] const EdgePiece& Of(Index p, Index q) const {
        const auto found = live_.find(KeyOf(p, q));
        assert(found != live_.end());
        return pieces_[found->second];
    }
    [[nodiscard]] const EdgePiece& At(PieceNumber piece) const { return pieces_[piece]; }

    /// Tells of the edges that a piece consists of now.
    template <class Visit>
    void ForEachEdge(PieceNumber piece, Visit visit) const {
        std::vector<PieceNumber> waiting{piece};
        while (!waiting.empty()) {
            const EdgePiece& next = pieces_[waiting.back()];
            waiting.pop_back();
            if (next.parts.empty()) {
                visit(next.from, next.to);
            }
            waiting.insert(waiting.end(), next.parts.rbegin(), next.parts.rend());
        }
    }

    /// Edges along which lines run.
    [[nodiscard]] std::int64_t CountOfLines() const {
        std::int64_t count = 0;
        for (const auto& [key, piece] : live_) {
            count += pieces_[piece].line != kNoLine ? 1 : 0;
        }
        return count;
    }

private:
    static std::uint64_t KeyOf(Index p, Index q) {
        const auto [low, high] = p < q ? std::pair(p, q) : std::pair(q, p);
        return static_cast<std::uint64_t>(low) << 32U | static_cast<std::uint32_t>(high);
    }

    std::vector<EdgePiece> pieces_;
    std::unordered_map<std::uint64_t, PieceNumber> live_;
};

} // namespace terravo
