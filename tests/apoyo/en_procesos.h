// The same work by several processes at once.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <exception>
#include <functional>
#include <vector>

namespace tarvoline::pruebas {

// Forks `procesos` times, each child with its number from 0, and waits for all of them. Each does `paso`
// `veces` times, which must not throw; it gets the number of the process and that of the time, both from 0.
inline void enProcesos(int procesos, int veces, const std::function<void(int, int)>& paso) {
    std::vector<pid_t> hijos;
    for (int p = 0; p < procesos; ++p) {
        const pid_t hijo = ::fork();
        ASSERT_GE(hijo, 0);
        if (hijo > 0) {
            hijos.push_back(hijo);
            continue;
        }
        int fallos = 0;
        for (int i = 0; i < veces; ++i) {
            try {
                paso(p, i);
            } catch (const std::exception&) {
                ++fallos;
            }
        }
        ::_exit(fallos);
    }
    for (const pid_t hijo : hijos) {
        int estado = 0;
        ASSERT_EQ(::waitpid(hijo, &estado, 0), hijo);
        EXPECT_EQ(estado, 0) << "what the process failed at";
    }
}

}  // namespace tarvoline::pruebas
