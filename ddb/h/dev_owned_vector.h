// DEV_OWNED_VECTOR<T>: a list of records it owns (a record's id is its position). It is a
// std::vector<T*>, so getters hand it out as one; it deletes its records when destroyed or
// cleared. In the persistent form each record is stored here, under the number that the
// links to it (plain T* elsewhere) use.
#ifndef VELCORA_DEV_OWNED_VECTOR_H
#define VELCORA_DEV_OWNED_VECTOR_H

#include <vector>

template <typename T>
class DEV_OWNED_VECTOR : public std::vector<T*> {
public:
    DEV_OWNED_VECTOR() = default;
    ~DEV_OWNED_VECTOR() { clear(); }
    DEV_OWNED_VECTOR(const DEV_OWNED_VECTOR&) = delete;
    DEV_OWNED_VECTOR& operator=(const DEV_OWNED_VECTOR&) = delete;

    // Deletes every record and empties the list.
    void clear() {
        for (T* record : *this) delete record;
        std::vector<T*>::clear();
    }
};

#endif
