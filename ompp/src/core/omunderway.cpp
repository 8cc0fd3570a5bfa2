#include "omunderway.h"

#include <utility>

/// The program's own outlives all that has an end.
OMUnderWay::Run* OMUnderWay::run_ = new Run(Run::Kind::Outermost);

OMUnderWay::Run::Run(Kind kind)
    : kind_(kind), number_(++runs_), depth_(OMUnderWay::depth_), outer_(run_) {
    run_ = this;
}

OMUnderWay::Run::~Run() { run_ = outer_; }

/// An action may put others off, which come after those that wait already.
void OMUnderWay::Run::carryOut() {
    const OMUnderWay underWay;
    for (std::size_t next = 0; next < waiting_.size(); ++next)
        std::exchange(waiting_[next], nullptr)();
    waiting_.clear();
}

void OMUnderWay::afterwards(std::uint64_t run, OMLink action) {
    Run* with = run_;
    while (with->number_ != run && with->kind_ != Run::Kind::Outermost) with = with->outer_;
    if (with == run_ && depth_ == with->depth_)
        action();
    else
        with->waiting_.push_back(std::move(action));
}
