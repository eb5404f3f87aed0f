#include "noyau/compression/detail/Zlib.h"

#include <zlib.h>

#include <limits>
#include <memory>
#include <new>

namespace sdd::detail {

namespace {

// Les tailles passées ici viennent de tampons de 32 bits : elles tiennent dans uInt.
uInt EnUInt(std::uint64_t n)
{
    if (n > std::numeric_limits<uInt>::max()) {
        throw std::bad_alloc();
    }
    return static_cast<uInt>(n);
}

void Branche(z_stream& flux, unsigned char* dest, std::uint64_t longueur,
             unsigned char const* source, std::uint64_t n)
{
    flux.next_in = const_cast<unsigned char*>(source);
    flux.avail_in = EnUInt(n);
    flux.next_out = dest;
    flux.avail_out = EnUInt(longueur);
}

} // namespace

z_stream_s* NouveauDeflate()
{
    auto flux = std::make_unique<z_stream>();
    if (deflateInit(flux.get(), Z_DEFAULT_COMPRESSION) != Z_OK) {
        throw std::bad_alloc();
    }
    return flux.release();
}

void LibereDeflate(z_stream_s* flux)
{
    if (flux != nullptr) {
        deflateEnd(flux);
        delete flux;
    }
}

z_stream_s* NouvelInflate()
{
    auto flux = std::make_unique<z_stream>();
    if (inflateInit(flux.get()) != Z_OK) {
        throw std::bad_alloc();
    }
    return flux.release();
}

void LibereInflate(z_stream_s* flux)
{
    if (flux != nullptr) {
        inflateEnd(flux);
        delete flux;
    }
}

bool Comprime(z_stream_s& flux, unsigned char* dest, std::uint64_t* longueur,
              unsigned char const* source, std::uint64_t n)
{
    deflateReset(&flux);
    Branche(flux, dest, *longueur, source, n);
    int const code = deflate(&flux, Z_FINISH);
    *longueur = flux.total_out;
    return code == Z_STREAM_END;
}

FinInflate Decomprime(z_stream_s& flux, unsigned char* dest, std::uint64_t* longueur,
                      unsigned char const* source, std::uint64_t n)
{
    inflateReset(&flux);
    Branche(flux, dest, *longueur, source, n);
    int const code = inflate(&flux, Z_FINISH);
    *longueur = flux.total_out;
    if (code == Z_MEM_ERROR) {
        throw std::bad_alloc();
    }
    if (code == Z_STREAM_END) {
        return FinInflate::Complete;
    }
    return flux.avail_out == 0 ? FinInflate::PlaceManque : FinInflate::Interrompue;
}

} // namespace sdd::detail
