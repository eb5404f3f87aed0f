#pragma once

#include <condition_variable>
#include <mutex>

// Compte à rebours pour synchroniser les tests sans jamais dormir.
class Loquet
{
public:
    explicit Loquet(int compte = 1) : _compte(compte) {}

    void Decompte()
    {
        std::lock_guard<std::mutex> verrou(_verrou);
        if (--_compte <= 0) {
            _zero.notify_all();
        }
    }
    void Attends()
    {
        std::unique_lock<std::mutex> verrou(_verrou);
        _zero.wait(verrou, [this] { return _compte <= 0; });
    }

private:
    std::mutex _verrou;
    std::condition_variable _zero;
    int _compte;
};
