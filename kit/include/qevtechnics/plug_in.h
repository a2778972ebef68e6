/// \file
/// The entries of a technics plug-in.
#pragma once

#include <array>
#include <tuple>

#include <qev/technics.h>

/// Exports what the technics manager asks of a plug-in: the interface version, and the two entries that bear
/// the plug-in's name, which is that of its file without folder and extension. The operators' classes follow;
/// one operator of each is made when the plug-in is loaded, and lives as long. The directory for temporary
/// files is not kept. Stands once in a plug-in, outside of all namespaces:
///
///     QEV_TECHNICS_PLUG_IN(groove, GrooveOperator)
#define QEV_TECHNICS_PLUG_IN(NAME, ...)                                                                      \
    extern "C" {                                                                                             \
    extern QEV_EXPORT const int Qev_Interface_Version;                                                       \
    const int Qev_Interface_Version = qev::kTechnicsInterface;                                               \
    QEV_EXPORT qev::CITechnicsOperator** Load_##NAME##_Technics() {                                          \
        static std::tuple<__VA_ARGS__> operators;                                                            \
        static auto list = std::apply(                                                                       \
            [](auto&... each) {                                                                              \
                return std::array<qev::CITechnicsOperator*, sizeof...(each) + 1>{&each..., nullptr};         \
            },                                                                                               \
            operators);                                                                                      \
        return list.data();                                                                                  \
    }                                                                                                        \
    QEV_EXPORT void Set_##NAME##_CadTempDir(char*) {}                                                        \
    }
