#include "pegboard.h"

#include <algorithm>

namespace {

constexpr PegBoard::Jump kJumps[] = {
    {1, 6, 3},   {1, 4, 2},                                //
    {2, 9, 5},   {2, 7, 4},                                //
    {3, 8, 5},   {3, 10, 6},                               //
    {4, 1, 2},   {4, 6, 5},    {4, 11, 7},   {4, 13, 8},   //
    {5, 14, 9},  {5, 12, 8},                               //
    {6, 1, 3},   {6, 4, 5},    {6, 13, 9},   {6, 15, 10},  //
    {7, 2, 4},   {7, 9, 8},                                //
    {8, 3, 5},   {8, 10, 9},                               //
    {9, 2, 5},   {9, 7, 8},                                //
    {10, 3, 6},  {10, 8, 9},                               //
    {11, 4, 7},  {11, 13, 12},                             //
    {12, 5, 8},  {12, 14, 13},                             //
    {13, 4, 8},  {13, 6, 9},   {13, 11, 12}, {13, 15, 14}, //
    {14, 5, 9},  {14, 12, 13},                             //
    {15, 6, 10}, {15, 13, 14},
};

} // namespace

int PegBoard::pegCount() const { return static_cast<int>(std::ranges::count(pegs_, true)); }

std::optional<PegBoard::Jump> PegBoard::legalJump(int from, int to) const {
    const auto found = std::ranges::find_if(kJumps, [&](const Jump& jump) {
        return jump.from == from && jump.to == to && isLegal(jump);
    });
    return found == std::end(kJumps) ? std::nullopt : std::optional(*found);
}

bool PegBoard::hasLegalJump() const {
    return std::ranges::any_of(kJumps, [this](const Jump& jump) { return isLegal(jump); });
}
