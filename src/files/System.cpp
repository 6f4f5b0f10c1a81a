#include "files/System.h"

#include <utility>

namespace qx::files {

namespace {

System*& Chosen() {
    static System real;
    static System* chosen = &real;
    return chosen;
}

} // namespace

System& System::Current() {
    return *Chosen();
}

System::Replacement::Replacement(System& system) : m_previous(std::exchange(Chosen(), &system)) {}

System::Replacement::~Replacement() {
    Chosen() = m_previous;
}

} // namespace qx::files
