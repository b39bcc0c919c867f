// x86-64: AVX2 when the processor has it, else the tables.
//
// Encoding spreads each 24 bits over four bytes with two multiplications, then adds to each 6-bit value the
// distance to its letter, looked up by the range it lies in. Decoding classifies each character by its two
// halves, which finds any foreign one, adds the distance back, and packs with two multiply-adds.
#include <immintrin.h>

#include "soap/base64_bloques.h"

namespace tarvoline::soap {
namespace {

#define TARVOLINE_AVX2 __attribute__((target("avx2")))

TARVOLINE_AVX2 __m256i enAmbas(__m128i mitad) {
    return _mm256_broadcastsi128_si256(mitad);
}

// 24 bytes, twelve in each half register, into 32 values of six bits.
TARVOLINE_AVX2 __m256i repartir(__m256i bytes) {
    const __m256i orden = enAmbas(_mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
    const __m256i grupos = _mm256_shuffle_epi8(bytes, orden);
    const __m256i pares = _mm256_mulhi_epu16(_mm256_and_si256(grupos, _mm256_set1_epi32(0x0FC0'FC00)),
                                             _mm256_set1_epi32(0x0400'0040));
    const __m256i nones = _mm256_mullo_epi16(_mm256_and_si256(grupos, _mm256_set1_epi32(0x003F'03F0)),
                                             _mm256_set1_epi32(0x0100'0010));
    return _mm256_or_si256(pares, nones);
}

// Values 0 to 63 into letters. Ranges: 0..25 -> 13, 26..51 -> 0, 52..61 -> 1..10, 62 -> 11, 63 -> 12.
TARVOLINE_AVX2 __m256i aLetras(__m256i valores) {
    const __m256i distancias =
        enAmbas(_mm_setr_epi8('a' - 26, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52,
                              '0' - 52, '0' - 52, '0' - 52, '+' - 62, '/' - 63, 'A', 0, 0));
    const __m256i rango = _mm256_subs_epu8(valores, _mm256_set1_epi8(51));
    const __m256i mayuscula = _mm256_cmpgt_epi8(_mm256_set1_epi8(26), valores);
    const __m256i cual = _mm256_or_si256(rango, _mm256_and_si256(mayuscula, _mm256_set1_epi8(13)));
    return _mm256_add_epi8(valores, _mm256_shuffle_epi8(distancias, cual));
}

TARVOLINE_AVX2 std::size_t codificarAvx2(const unsigned char* origen, std::size_t longitud, char* destino) {
    std::size_t i = 0;
    // The second half is read from byte 12 on, 16 bytes wide: four bytes beyond the 24 must be there.
    for (; i + 28 <= longitud; i += 24, destino += 32) {
        const __m128i baja = _mm_loadu_si128(reinterpret_cast<const __m128i*>(origen + i));
        const __m128i alta = _mm_loadu_si128(reinterpret_cast<const __m128i*>(origen + i + 12));
        const __m256i letras = aLetras(repartir(_mm256_set_m128i(alta, baja)));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(destino), letras);
    }
    return i;
}

TARVOLINE_AVX2 std::size_t decodificarAvx2(const char* origen, std::size_t longitud, unsigned char* destino) {
    // A character is foreign when its two halves share a bit of these tables.
    const __m256i porBaja = enAmbas(_mm_setr_epi8(0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,
                                                  0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A));
    const __m256i porAlta = enAmbas(_mm_setr_epi8(0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08, 0x10, 0x10,
                                                  0x10, 0x10, 0x10, 0x10, 0x10, 0x10));
    // Distance from letter to value by the high half; "/" goes one place back.
    const __m256i distancias = enAmbas(_mm_setr_epi8(0, 63 - '/', 62 - '+', 52 - '0', -'A', -'A', 26 - 'a',
                                                     26 - 'a', 0, 0, 0, 0, 0, 0, 0, 0));
    const __m256i orden = enAmbas(_mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
    const __m256i mitad = _mm256_set1_epi8(0x0F);
    std::size_t i = 0;
    // 32 bytes are written for 24 that count: the room of eleven more characters must follow.
    for (; i + 44 <= longitud; i += 32, destino += 24) {
        const __m256i letras = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(origen + i));
        const __m256i alta = _mm256_and_si256(_mm256_srli_epi32(letras, 4), mitad);
        const __m256i baja = _mm256_and_si256(letras, mitad);
        const __m256i ajenas =
            _mm256_and_si256(_mm256_shuffle_epi8(porBaja, baja), _mm256_shuffle_epi8(porAlta, alta));
        if (_mm256_testz_si256(ajenas, ajenas) == 0) break;
        const __m256i barra = _mm256_cmpeq_epi8(letras, _mm256_set1_epi8('/'));
        const __m256i valores =
            _mm256_add_epi8(letras, _mm256_shuffle_epi8(distancias, _mm256_add_epi8(alta, barra)));
        const __m256i parejas = _mm256_maddubs_epi16(valores, _mm256_set1_epi32(0x0140'0140));
        const __m256i grupos = _mm256_madd_epi16(parejas, _mm256_set1_epi32(0x0001'1000));
        const __m256i bytes = _mm256_shuffle_epi8(grupos, orden);
        const __m256i juntos = _mm256_permutevar8x32_epi32(bytes, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(destino), juntos);
    }
    return i;
}

}  // namespace

std::size_t codificarBloques(const unsigned char* origen, std::size_t longitud, char* destino) {
    return __builtin_cpu_supports("avx2") != 0 ? codificarAvx2(origen, longitud, destino) : 0;
}

std::size_t decodificarBloques(const char* origen, std::size_t longitud, unsigned char* destino) {
    return __builtin_cpu_supports("avx2") != 0 ? decodificarAvx2(origen, longitud, destino) : 0;
}

}  // namespace tarvoline::soap
