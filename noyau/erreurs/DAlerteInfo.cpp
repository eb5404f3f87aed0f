#include "noyau/erreurs/DAlerteInfo.h"

#include "noyau/plateforme/RoutinesGeneralesQt.h"

namespace {

// Typographie française et fins de ligne Unix ; l'ordre compte : « \r\n » d'abord, puis le
// « \r » resté seul.
void AjusteTexte(UniChaine& texte)
{
    texte.Remplace(UniChaine(u"'"), UniChaine(u"\u2019"));
    texte.Remplace(UniChaine(u"\u00AB "), UniChaine(u"\u00AB\u00A0"));
    texte.Remplace(UniChaine(u" \u00BB"), UniChaine(u"\u00A0\u00BB"));
    texte.Remplace(UniChaine(u"\r\n"), UniChaine(u"\n"));
    texte.Remplace(UniChaine(u"\r"), UniChaine(u"\n"));
}

char const* EtiquetteJournal(DAlerteInfo::eTypeDialogue type)
{
    switch (type) {
    case DAlerteInfo::kInconnu:
        return "(Inconnu)";
    case DAlerteInfo::kQuestion:
        return "(Question)";
    case DAlerteInfo::kInformation:
        return "(Information)";
    case DAlerteInfo::kAttention:
    case DAlerteInfo::kAttentionBis:
        return "(Attention)";
    case DAlerteInfo::kAlerte:
        return "(ALERTE)";
    case DAlerteInfo::kIconeMaison:
        return "(IconeMaison)";
    }
    return "(Autre)";
}

// « Code Erreur: {1}; » avec le numéro en décimal simple.
UniChaine TexteCodeErreur(int numero)
{
    // Traduction à venir ; commentaire pour le traducteur : « Pour message d'erreur
    // général avec des numéros d'erreurs. Point-virgule à la fin. »
    UniChaine const modele("Code Erreur: {1};");
    return modele.Remplace(UniChaine("{1}"), UniChaine::DepuisNombre(numero));
}

UniChaine TexteDetail(int detail)
{
    return UniChaine::Format(" %d;", detail);
}

} // namespace

bool DAlerteInfo::avecDecoration = false;

UniChaine& DAlerteInfo::DonneDecoration()
{
    static UniChaine decoration;
    return decoration;
}

DAlerteInfo::DAlerteInfo() : _type(kInconnu), _titreParDefaut(true) {}

DAlerteInfo::DAlerteInfo(eTypeDialogue type, UniChaine const& message, UniChaine const& explication,
                         UniChaine const& titre)
    : _type(type), _message(message), _explication(explication), _titre(titre),
      _titreParDefaut(titre.EstVide())
{
    if (_titreParDefaut) {
        _titre = avecDecoration ? RoutinesGeneralesQt::DonneNomApplicationDecoray(DonneDecoration())
                                : UniChaine("Pelimore 9");
    }
    AjusteTexte(_message);
    AjusteTexte(_explication);
    AjusteTexte(_titre);
}

DAlerteInfo::DAlerteInfo(DAlerteInfo const& source)
    : _type(source._type), _message(source._message), _explication(source.DonneExplication()),
      _titre(source._titre), _titreParDefaut(source._titreParDefaut && !avecDecoration)
{
}

DAlerteInfo::DAlerteInfo(DAlerteInfo const& source, CopieBrute)
    : _type(source._type), _message(source._message), _explication(source._explication),
      _titre(source._titre), _titreParDefaut(source._titreParDefaut)
{
}

DAlerteInfo& DAlerteInfo::operator=(DAlerteInfo const& source)
{
    if (this != &source) {
        _CopieChamps(DAlerteInfo(source));
    }
    return *this;
}

void DAlerteInfo::_CopieChamps(DAlerteInfo const& source)
{
    _type = source._type;
    _message = source._message;
    _explication = source._explication;
    _titre = source._titre;
    _titreParDefaut = source._titreParDefaut;
}

DAlerteInfo::~DAlerteInfo() = default;

bool DAlerteInfo::EstNULL() const
{
    return _type == kInconnu && _message == kUniChaineNulle && _explication == kUniChaineNulle &&
           _titre == kUniChaineNulle;
}

UniChaine DAlerteInfo::DonneChainePourStdException() const
{
    return _message + UniChaine(u" ") + DonneExplication();
}

UniChaine DAlerteInfo::DonneMessagePourJournalisation() const
{
    UniChaine const tab(u"\t");
    return UniChaine(EtiquetteJournal(_type)) + tab + _message + tab + _explication + tab;
}

DAlerteInfoErreur::DAlerteInfoErreur(eTypeDialogue type, UniChaine const& message,
                                     UniChaine const& explication, int numeroErreur,
                                     UniChaine const& titre, int detail1, int detail2)
    : DAlerteInfo(type, message, explication, titre), _numeroErreur(numeroErreur),
      _detail1(detail1), _detail2(detail2)
{
}

DAlerteInfoErreur::DAlerteInfoErreur(DAlerteInfoErreur const& source)
    : DAlerteInfo(source, CopieBrute()), _numeroErreur(source._numeroErreur),
      _detail1(source._detail1), _detail2(source._detail2)
{
}

DAlerteInfoErreur& DAlerteInfoErreur::operator=(DAlerteInfoErreur const& source)
{
    _CopieChamps(source);
    _numeroErreur = source._numeroErreur;
    _detail1 = source._detail1;
    _detail2 = source._detail2;
    return *this;
}

DAlerteInfoErreur::~DAlerteInfoErreur() = default;

UniChaine DAlerteInfoErreur::DonneExplication() const
{
    UniChaine explication = DAlerteInfo::DonneExplication();
    if (_numeroErreur != -1) {
        explication += UniChaine(u"\n\n ") + TexteCodeErreur(_numeroErreur);
    }
    if (_detail1 != -1) {
        explication += TexteDetail(_detail1);
    }
    if (_detail2 != -1) {
        explication += TexteDetail(_detail2);
    }
    return explication;
}

DAlerteInfoAssertionQt::DAlerteInfoAssertionQt(eTypeDialogue type, UniChaine const& message,
                                               UniChaine const& explication)
    : DAlerteInfo(type, message, explication, UniChaine())
{
}

DAlerteInfoAssertionQt::~DAlerteInfoAssertionQt() = default;
