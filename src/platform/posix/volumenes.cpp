#include "platform/posix/volumenes.h"

#include <sys/sysmacros.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/posix/errores.h"

namespace tarvoline::platform::posix {

namespace {

struct Sistema {
    std::uint32_t clase;  // f_type of statfs(2)
    bool fechaNombres;
};

// The file systems that live on this machine's own disks or memory.
constexpr std::array<Sistema, 13> sistemasLocales{{
    {0xEF53, true},       // ext2, ext3, ext4
    {0x58465342, true},   // xfs
    {0x9123683E, true},   // btrfs
    {0x01021994, true},   // tmpfs
    {0x858458F6, false},  // ramfs
    {0x794C7630, true},   // overlay
    {0x2FC12FC1, false},  // zfs
    {0xF2F52010, true},   // f2fs
    {0x3153464A, false},  // jfs
    {0x52654973, false},  // reiserfs
    {0x7366746E, false},  // ntfs3
    {0x2011BAB0, false},  // exfat
    {0x4D44, false},      // vfat
}};

}  // namespace

Volumen volumenDe(int descriptor) {
    struct statfs datos {};
    if (repetir([&] { return ::fstatfs(descriptor, &datos); }) != 0) return {};
    const auto clase = static_cast<std::uint32_t>(datos.f_type);
    const auto* const uno = std::find_if(sistemasLocales.begin(), sistemasLocales.end(),
                                         [&](const Sistema& sistema) { return sistema.clase == clase; });
    if (uno == sistemasLocales.end()) return {};
    return {true, uno->fechaNombres};
}

Volumen Volumenes::de(int descriptor, dev_t dispositivo) {
    // Numbers without a device behind them (major 0: memory, overlays, network shares) are given to another
    // file system once theirs is unmounted, so those are asked each time.
    if (major(dispositivo) == 0) return volumenDe(descriptor);
    const std::lock_guard turno(mutex_);
    const auto [sitio, nuevo] = conocidos_.try_emplace(dispositivo);
    if (nuevo) sitio->second = volumenDe(descriptor);
    return sitio->second;
}

}  // namespace tarvoline::platform::posix
