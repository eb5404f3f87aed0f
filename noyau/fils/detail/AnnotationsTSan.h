#pragma once

// Qt n'est pas instrumenté : ThreadSanitizer ne voit ni ses verrous ni ses files
// d'événements. Ces annotations lui décrivent ce que font nos verrous et nos passages de
// main entre fils ; hors de ThreadSanitizer elles ne coûtent rien.

#if defined(__SANITIZE_THREAD__)
#define NOYAU_TSAN 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define NOYAU_TSAN 1
#endif
#endif

#ifdef NOYAU_TSAN
#include <sanitizer/tsan_interface.h>
#endif

namespace sdd::detail {

#ifdef NOYAU_TSAN
inline void TsanCreeVerrou(void* v, bool recursif)
{
    __tsan_mutex_create(v, recursif ? __tsan_mutex_write_reentrant : 0);
}
inline void TsanDetruitVerrou(void* v)
{
    __tsan_mutex_destroy(v, 0);
}
inline void TsanAvantVerrouillage(void* v, unsigned drapeaux)
{
    __tsan_mutex_pre_lock(v, drapeaux);
}
inline void TsanApresVerrouillage(void* v, unsigned drapeaux)
{
    __tsan_mutex_post_lock(v, drapeaux, 0);
}
inline void TsanAvantDeverrouillage(void* v)
{
    __tsan_mutex_pre_unlock(v, 0);
}
inline void TsanApresDeverrouillage(void* v)
{
    __tsan_mutex_post_unlock(v, 0);
}
// Ce qu'un fil a écrit avant Publie(a) est visible d'un autre fil après Recoit(a).
inline void TsanPublie(void const* a)
{
    __tsan_release(const_cast<void*>(a));
}
inline void TsanRecoit(void const* a)
{
    __tsan_acquire(const_cast<void*>(a));
}
constexpr unsigned kTsanEssai = __tsan_mutex_try_lock;
constexpr unsigned kTsanEssaiRate = __tsan_mutex_try_lock | __tsan_mutex_try_lock_failed;
#else
inline void TsanCreeVerrou(void*, bool) {}
inline void TsanDetruitVerrou(void*) {}
inline void TsanAvantVerrouillage(void*, unsigned) {}
inline void TsanApresVerrouillage(void*, unsigned) {}
inline void TsanAvantDeverrouillage(void*) {}
inline void TsanApresDeverrouillage(void*) {}
inline void TsanPublie(void const*) {}
inline void TsanRecoit(void const*) {}
constexpr unsigned kTsanEssai = 0;
constexpr unsigned kTsanEssaiRate = 0;
#endif

} // namespace sdd::detail
