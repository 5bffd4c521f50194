#include <Platform/URLLoading/Detail/Deadlines.hpp>

namespace tovrel {

void Deadlines::set(Entry& entry, TimePoint time) {
    if (entry.position_ == Entry::nowhere) {
        heap_.push_back(Node{time, &entry});
        entry.position_ = heap_.size() - 1;
    } else {
        heap_[entry.position_].time = time;
    }
    restore(entry.position_);
}

void Deadlines::remove(Entry& entry) noexcept {
    if (entry.position_ == Entry::nowhere) {
        return;
    }
    const std::size_t position = entry.position_;
    const Node last = heap_.back();
    heap_.pop_back();
    entry.position_ = Entry::nowhere;
    if (last.entry != &entry) {
        place(position, last);
        restore(position);
    }
}

std::optional<Deadlines::TimePoint> Deadlines::earliest() const noexcept {
    return heap_.empty() ? std::nullopt : std::optional<TimePoint>(heap_.front().time);
}

Deadlines::Entry* Deadlines::takeDue(TimePoint now) noexcept {
    if (heap_.empty() || heap_.front().time > now) {
        return nullptr;
    }
    Entry* entry = heap_.front().entry;
    remove(*entry);
    return entry;
}

void Deadlines::place(std::size_t position, Node node) noexcept {
    heap_[position] = node;
    node.entry->position_ = position;
}

void Deadlines::restore(std::size_t position) noexcept {
    const Node node = heap_[position];
    while (position > 0) {
        const std::size_t parent = (position - 1) / 2;
        if (heap_[parent].time <= node.time) {
            break;
        }
        place(position, heap_[parent]);
        position = parent;
    }
    for (std::size_t child = 2 * position + 1; child < heap_.size(); child = 2 * position + 1) {
        if (child + 1 < heap_.size() && heap_[child + 1].time < heap_[child].time) {
            ++child;
        }
        if (node.time <= heap_[child].time) {
            break;
        }
        place(position, heap_[child]);
        position = child;
    }
    place(position, node);
}

} // namespace tovrel
