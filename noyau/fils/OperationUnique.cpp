#include "noyau/fils/OperationUnique.h"

namespace sdd {

void OperationUnique::operator()(std::function<void()> bloc)
{
    if (_fait.load(std::memory_order_acquire)) {
        return;
    }
    std::lock_guard<std::mutex> garde(_verrou);
    if (_fait.load(std::memory_order_relaxed)) {
        return;
    }
    if (bloc) {
        bloc();
    }
    _fait.store(true, std::memory_order_release);
}

} // namespace sdd
