#include "noyau/chaines/UniChaineFormatee.h"

namespace {

QLatin1String Couleur(UniChaineFormatee::eCouleur couleur)
{
    switch (couleur) {
    case UniChaineFormatee::kRouge:
        return QLatin1String("#c00000");
    case UniChaineFormatee::kVert:
        return QLatin1String("#008000");
    case UniChaineFormatee::kBleu:
        return QLatin1String("#0000c0");
    case UniChaineFormatee::kGris:
        return QLatin1String("#808080");
    case UniChaineFormatee::kOrange:
        return QLatin1String("#e07000");
    case UniChaineFormatee::kBlanc:
        return QLatin1String("#ffffff");
    default:
        return QLatin1String("#000000");
    }
}

QLatin1String Style(UniChaineFormatee::eStyle style)
{
    switch (style) {
    case UniChaineFormatee::kGras:
        return QLatin1String(" font-weight:bold;");
    case UniChaineFormatee::kItalique:
        return QLatin1String(" font-style:italic;");
    case UniChaineFormatee::kSouligne:
        return QLatin1String(" text-decoration:underline;");
    case UniChaineFormatee::kGrasItalique:
        return QLatin1String(" font-weight:bold; font-style:italic;");
    default:
        return QLatin1String("");
    }
}

QLatin1String Taille(UniChaineFormatee::eTaille taille)
{
    switch (taille) {
    case UniChaineFormatee::kPetite:
        return QLatin1String(" font-size:small;");
    case UniChaineFormatee::kGrande:
        return QLatin1String(" font-size:large;");
    default:
        return QLatin1String("");
    }
}

} // namespace

UniChaineFormatee::UniChaineFormatee(UniChaine const& texte, eCouleur couleur, eStyle style,
                                     eTaille taille)
{
    InitAvecUniChaine(texte, couleur, style, taille);
}

UniChaineFormatee::UniChaineFormatee(char const* texte, UniChaine::Codage codage, int longueur,
                                     eCouleur couleur, eStyle style, eTaille taille)
{
    InitAvecUniChaine(UniChaine(texte, codage, longueur), couleur, style, taille);
}

UniChaineFormatee::~UniChaineFormatee() = default;

void UniChaineFormatee::InitAvecUniChaine(UniChaine const& texte, eCouleur couleur, eStyle style,
                                          eTaille taille)
{
    _texte = texte.DonneQString();
    _formate.clear();
    _formate.reserve(int(_texte.size() * 1.1) + 64); // le texte, un peu d'échappement, la balise
    _formate += QLatin1String("<span style=\"color:");
    _formate += Couleur(couleur);
    _formate += QLatin1Char(';');
    _formate += Style(style);
    _formate += Taille(taille);
    _formate += QLatin1String("\">");
    for (QChar const c : _texte) {
        switch (c.unicode()) {
        case '&':
            _formate += QLatin1String("&amp;");
            break;
        case '<':
            _formate += QLatin1String("&lt;");
            break;
        case '>':
            _formate += QLatin1String("&gt;");
            break;
        case '"':
            _formate += QLatin1String("&quot;");
            break;
        default:
            _formate += c;
        }
    }
    _formate += QLatin1String("</span>");
}

UniChaineFormatee& UniChaineFormatee::operator+=(UniChaineFormatee const& autre)
{
    _texte += autre._texte;
    _formate += autre._formate;
    return *this;
}

UniChaineFormatee UniChaineFormatee::operator+(UniChaineFormatee const& autre) const
{
    return UniChaineFormatee(*this) += autre;
}
