// The steps of std::regex_iterator, oddities included: the attempt behind an empty match already takes place at a later
// place of the text, but as long as no match has been stepped over in the ordinary way it is made as if the text began
// there.

#include "pattern/match_iterator.h"

namespace pattern {

bool MatchIterator::next() {
    if (ended_) return false;
    std::size_t from = 0;
    bool found = false;
    if (last_.matched()) {
        from = last_.end;
        if (last_.empty()) {
            ended_ = from == text_.size();
            if (ended_) return false;
            found = searcher_.search(from, {hasPrevious_, true});
            if (!found) ++from;
        }
        if (!found) hasPrevious_ = true;
    }
    if (!found) found = searcher_.search(from, {hasPrevious_, false});
    ended_ = !found;
    if (found) last_ = match_[0];
    return found;
}

} // namespace pattern
