#include "session/presets.h"

#include <string>

namespace kestrel_app {
namespace {

struct Sizes {
    const char* bets;
    const char* raises;
};

struct Preset {
    const char* board;
    const char* oop_range;
    const char* ip_range;
    double pot;  // chips, as the next two
    double stack;
    double rake_cap;
    Sizes flop;  // of both seats, as the next two
    Sizes turn;
    Sizes river;
};

ConfigMap map_of(const Preset& preset) {
    constexpr double target_percent_of_pot = 0.5;
    ConfigMap map = {
        {"board", preset.board},
        {"oop_range", preset.oop_range},
        {"ip_range", preset.ip_range},
        {"max_iterations", 400.0},
        {"target_exploitability", preset.pot * target_percent_of_pot / 100.0},
        {"starting_pot", preset.pot},
        {"effective_stack", preset.stack},
        {"rake_percent", 5.0},
        {"rake_cap", preset.rake_cap},
        {"starting_street", "flop"},
    };
    for (const std::string seat : {"oop", "ip"}) {
        const auto street = [&](const std::string& name, const Sizes& sizes) {
            const std::string prefix = seat + "_" + name;
            map[prefix + "_bet_sizes"] = sizes.bets;
            map[prefix + "_raise_sizes"] = sizes.raises;
            map[prefix + "_add_all_in"] = false;
        };
        street("flop", preset.flop);
        street("turn", preset.turn);
        street("river", preset.river);
        map[seat + "_add_all_in_jam_threshold_enabled"] = false;
        map[seat + "_add_all_in_jam_threshold_pct"] = 0.0;
    }
    for (const char* key : {"oop_flop_dont_donk", "oop_turn_dont_donk", "oop_river_dont_donk"}) {
        map[key] = false;
    }
    return map;
}

}  // namespace

ConfigMap default_preset() {
    return map_of(
        {.board = "QsJh2h",
         .oop_range =
             "88+,A8s+,A5s-A2s:0.5,AJo+,ATo:0.75,K9s+,KQo,KJo:0.75,KTo:0.25,Q9s+,QJo:0.5,J8s+,"
             "JTo:0.25,T8s+,T7s:0.45,97s+,96s:0.45,87s,86s:0.75,85s:0.45,75s+:0.75,74s:0.45,"
             "65s:0.75,64s:0.5,63s:0.45,54s:0.75,53s:0.5,52s:0.45,43s:0.5,42s:0.45,32s:0.45",
         .ip_range =
             "AA:0.25,99-22,AJs-A2s,AQo-A8o,K2s+,K9o+,Q2s+,Q9o+,J6s+,J9o+,T6s+,T9o,96s+,95s:0.5,"
             "98o,86s+,85s:0.5,75s+,74s:0.5,64s+,63s:0.5,54s,53s:0.5,43s",
         .pot = 180.0,
         .stack = 910.0,
         .rake_cap = 30.0,
         .flop = {"52", "45"},
         .turn = {"55", "45"},
         .river = {"70", "45"}});
}

ConfigMap quick_solve_preset() {
    return map_of(
        {.board = "AdJd8s",
         .oop_range =
             "88+,A8s+,A5s,A4s,A3s-A2s:0.5,AJo+,ATo,K9s+,KQo,KJo:0.75,KTo:0.25,Q9s+,QJo:0.5,J8s+,"
             "JTo:0.25,T8s+,T7s:0.45,97s+,96s:0.45,87s,86s:0.75,85s:0.45,75s+:0.75,65s:0.75,"
             "64s:0.5,54s:0.75,53s:0.5,43s:0.5,32s:0.45,A9o:0.5,K8s:0.5,Q8s:0.5,77:0.5,66:0.5,"
             "55:0.25",
         .ip_range =
             "AA:0.25,99-22,AJs-A6s,A5s-A4s:0.5,A3s-A2s,AQo-A7o,K2s+,K9o+,Q4s+,Q3s-Q2s:0.5,Q9o+,"
             "J6s+,J9o+,T6s+,T9o,96s+,95s:0.5,98o,86s+,85s:0.5,75s+,74s:0.5,64s+,63s:0.5,54s,"
             "53s:0.5,43s,QQ:0.25,JJ:0.25,TT:0.5,A5o:0.5,A4o:0.5,J5s:0.5,T5s:0.5",
         .pot = 18.0,
         .stack = 91.0,
         .rake_cap = 3.0,
         .flop = {"50", "50"},
         .turn = {"75", "50"},
         .river = {"75", "75"}});
}

}  // namespace kestrel_app
