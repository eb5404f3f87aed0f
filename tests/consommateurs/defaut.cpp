// Le défaut signalé : écrire par sdd::FluxSortie& dans un TamponMemoire dont le compilateur
// voit le type ne se liait pas à -O2 (la non-virtual thunk de Mets était cachée).

#include "verif.h"

#include <cstdint>
#include <map>
#include <vector>

// La forme du programme signalé est gardée telle quelle (portée globale comprise).
// clang-format off
struct Ecrivain {
  std::map<char16_t, uint64_t> n;
  void Ecris(sdd::FluxSortie& f) const {
    auto put = [&](uint32_t x) { for (int i = 0; i < 4; ++i) f.Mets(static_cast<unsigned char>(x >> (8 * i))); };
    put(uint32_t(n.size()));
    for (auto& [c, k] : n) { put(c); put(uint32_t(k)); }
  }
};
static std::vector<unsigned char> Forme(const std::vector<std::u16string>& mots) {
  Ecrivain e;
  for (auto& m : mots) for (char16_t c : m) ++e.n[c];
  sdd::TamponMemoire t(1024);
  e.Ecris(t);
  return std::vector<unsigned char>(t.DonneDonnees(), t.DonneDonnees() + t.DonneTaille());
}
// clang-format on

void VerifieDefautThunk()
{
    std::vector<unsigned char> const octets = Forme({u"abc", u"bcd"});
    VERIFIE(octets.size() == 4 + 4 * 8);
    // Compte 4, puis a→1, b→2, c→2, d→1, petit-boutistes.
    std::vector<unsigned char> const attendu = {4,   0, 0, 0, 'a', 0, 0, 0, 1,   0, 0, 0,
                                                'b', 0, 0, 0, 2,   0, 0, 0, 'c', 0, 0, 0,
                                                2,   0, 0, 0, 'd', 0, 0, 0, 1,   0, 0, 0};
    VERIFIE(octets == attendu);
}
