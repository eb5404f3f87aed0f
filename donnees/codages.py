"""Tables octet → UTF-16 des quatre codages à un octet, tirées des codecs de Python."""

# Codec Python de chaque table, dans l'ordre des tables générées.
CODECS = {
    "MacRoman": "mac_roman",
    "Latin9": "iso8859_15",
    "WinLatin1": "cp1252",
    "DOS": "cp850",
}

# Octets que Windows-1252 n'attribue pas : on les lit comme « ? », délibérément.
NON_ATTRIBUES_WIN = (0x81, 0x8D, 0x8F, 0x90, 0x9D)


def table(nom):
    """Les 256 unités UTF-16 du codage `nom` (une clé de CODECS)."""
    resultat = []
    for octet in range(256):
        try:
            texte = bytes([octet]).decode(CODECS[nom])
        except UnicodeDecodeError:
            if nom == "WinLatin1" and octet in NON_ATTRIBUES_WIN:
                texte = "?"
            else:
                raise
        if len(texte) != 1 or ord(texte) > 0xFFFF:
            raise SystemExit(f"{nom} : l'octet {octet:#04x} ne donne pas une seule unité UTF-16")
        resultat.append(ord(texte))
    return resultat


def tables():
    return {nom: table(nom) for nom in CODECS}
