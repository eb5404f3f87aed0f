#pragma once

#include "noyau/Export.h"

#include <QRunnable>

namespace sdd {

class FileOperations;
class OperationUnique;

// Opération envoyée à une file. Les files ne la détruisent jamais : l'appelant la garde en
// vie jusqu'à ce qu'elle ait tourné, et peut la renvoyer.
class NOYAU_EXPORT Operation : public QRunnable
{
public:
    Operation();
    void run() override;
    ~Operation() override;
    virtual void Execute() = 0;

    // Revient aussitôt ; lève OperationInvalide pour une file nulle ou sans file.
    void Lance(FileOperations* file);
    // Execute sur le fil appelant, si c'est le premier appel fait par cette garde.
    void LanceUneSeuleFois(OperationUnique* garde);
};

} // namespace sdd
