#include "noyau/fils/Operation.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/fils/FileOperations.h"
#include "noyau/fils/OperationUnique.h"

namespace sdd {

Operation::Operation()
{
    setAutoDelete(false);
}

Operation::~Operation() = default;

void Operation::run()
{
    Execute();
}

void Operation::Lance(FileOperations* file)
{
    if (file == nullptr) {
        throw exceptions::OperationInvalide();
    }
    file->LanceBlocOperation([this] { run(); });
}

void Operation::LanceUneSeuleFois(OperationUnique* garde)
{
    if (garde == nullptr) {
        throw exceptions::PointeurInvalide();
    }
    (*garde)([this] { Execute(); });
}

} // namespace sdd
