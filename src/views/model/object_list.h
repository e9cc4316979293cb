// ObjectList: the objects of one viewer in drawing order, shared between the thread that draws them and the
// threads that ask what lies under the cursor.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "media/photo.h"
#include "store/extension_table.h"

namespace kalmora {

// One thing in a view. The photo itself is touched only by the thread that has claimed it.
struct PlacedObject {
    explicit PlacedObject(std::unique_ptr<CPhoto> object) : photo(std::move(object)) {}
    const std::unique_ptr<CPhoto> photo;
    bool claimed = false;  // guarded by the list's mutex
    bool visible = false;  // guarded by the list's mutex: it was drawn since the marks were cleared
    Rect drawn;            // guarded by the list's mutex
};
using PlacedObjectPtr = std::shared_ptr<PlacedObject>;

// Any thread; the mutex is never held while a file is read or a picture drawn.
class ObjectList {
public:
    void Clear();
    void Add(std::unique_ptr<CPhoto> photo);
    std::size_t Count() const;
    bool IsEmpty() const { return Count() == 0; }
    // A copy of the present order; the objects are shared.
    std::vector<PlacedObjectPtr> Snapshot() const;
    // Takes Random() % size elements from the front to the back, so that each visit starts somewhere else.
    void RotateRandomly();
    // Moves this object to the tail: it is drawn last and so lies on top.
    void MoveToTail(const PlacedObjectPtr& object);
    PlacedObjectPtr Front() const;

    void ClearVisibleMarks();
    // Only one thread draws an object at a time. False when another has it.
    bool Claim(const PlacedObjectPtr& object);
    // Ends the claim; `drawn` is where it lies now, empty when nothing was painted.
    void MarkDrawn(const PlacedObjectPtr& object, const Rect& drawn);
    void Abandon(const PlacedObjectPtr& object);

    struct Hit {
        std::string path;
        ObjectKind kind = ObjectKind::Unknown;
        Rect drawn;
    };
    // The topmost drawn object under the point: the list from its end. False when there is none.
    bool HitTest(Point point, Hit* hit) const;

private:
    mutable std::mutex mutex_;
    std::deque<PlacedObjectPtr> objects_;  // guarded by mutex_
};

}  // namespace kalmora
