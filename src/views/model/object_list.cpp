#include "views/model/object_list.h"

#include <algorithm>

#include "base/random.h"

namespace kalmora {

void ObjectList::Clear() {
    std::deque<PlacedObjectPtr> old;
    std::lock_guard lock(mutex_);
    old.swap(objects_);
}

void ObjectList::Add(std::unique_ptr<CPhoto> photo) {
    auto object = std::make_shared<PlacedObject>(std::move(photo));
    std::lock_guard lock(mutex_);
    objects_.push_back(std::move(object));
}

std::size_t ObjectList::Count() const {
    std::lock_guard lock(mutex_);
    return objects_.size();
}

std::vector<PlacedObjectPtr> ObjectList::Snapshot() const {
    std::lock_guard lock(mutex_);
    return {objects_.begin(), objects_.end()};
}

void ObjectList::RotateRandomly() {
    std::lock_guard lock(mutex_);
    if (objects_.empty()) return;
    const auto count = static_cast<std::ptrdiff_t>(static_cast<std::size_t>(Random()) % objects_.size());
    std::rotate(objects_.begin(), objects_.begin() + count, objects_.end());
}

void ObjectList::MoveToTail(const PlacedObjectPtr& object) {
    std::lock_guard lock(mutex_);
    const auto found = std::find(objects_.begin(), objects_.end(), object);
    if (found == objects_.end()) return;
    PlacedObjectPtr kept = *found;
    objects_.erase(found);
    objects_.push_back(std::move(kept));
}

PlacedObjectPtr ObjectList::Front() const {
    std::lock_guard lock(mutex_);
    return objects_.empty() ? nullptr : objects_.front();
}

void ObjectList::ClearVisibleMarks() {
    std::lock_guard lock(mutex_);
    for (const auto& object : objects_) object->visible = false;
}

bool ObjectList::Claim(const PlacedObjectPtr& object) {
    std::lock_guard lock(mutex_);
    if (object->claimed) return false;
    object->claimed = true;
    return true;
}

void ObjectList::MarkDrawn(const PlacedObjectPtr& object, const Rect& drawn) {
    std::lock_guard lock(mutex_);
    object->claimed = false;
    object->visible = !drawn.IsEmpty();
    object->drawn = drawn;
}

void ObjectList::Abandon(const PlacedObjectPtr& object) {
    std::lock_guard lock(mutex_);
    object->claimed = false;
}

bool ObjectList::HitTest(Point point, Hit* hit) const {
    std::lock_guard lock(mutex_);
    for (auto object = objects_.rbegin(); object != objects_.rend(); ++object) {
        if (!(*object)->visible || !(*object)->drawn.ContainsInclusive(point)) continue;
        if (hit) *hit = {(*object)->photo->path, (*object)->photo->kind, (*object)->drawn};
        return true;
    }
    return false;
}

}  // namespace kalmora
