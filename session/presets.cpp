#include "session/presets.h"

namespace kestrel_app {

ConfigMap quick_solve_preset() {
    constexpr double pot = 18.0;
    constexpr double target_percent_of_pot = 0.5;
    ConfigMap map = {
        {"board", "AdJd8s"},
        {"oop_range",
         "88+,A8s+,A5s,A4s,A3s-A2s:0.5,AJo+,ATo,K9s+,KQo,KJo:0.75,KTo:0.25,Q9s+,QJo:0.5,J8s+,"
         "JTo:0.25,T8s+,T7s:0.45,97s+,96s:0.45,87s,86s:0.75,85s:0.45,75s+:0.75,65s:0.75,64s:0.5,"
         "54s:0.75,53s:0.5,43s:0.5,32s:0.45,A9o:0.5,K8s:0.5,Q8s:0.5,77:0.5,66:0.5,55:0.25"},
        {"ip_range",
         "AA:0.25,99-22,AJs-A6s,A5s-A4s:0.5,A3s-A2s,AQo-A7o,K2s+,K9o+,Q4s+,Q3s-Q2s:0.5,Q9o+,J6s+,"
         "J9o+,T6s+,T9o,96s+,95s:0.5,98o,86s+,85s:0.5,75s+,74s:0.5,64s+,63s:0.5,54s,53s:0.5,43s,"
         "QQ:0.25,JJ:0.25,TT:0.5,A5o:0.5,A4o:0.5,J5s:0.5,T5s:0.5"},
        {"max_iterations", 400.0},
        {"target_exploitability", pot * target_percent_of_pot / 100.0},
        {"starting_pot", pot},
        {"effective_stack", 91.0},
        {"rake_percent", 5.0},
        {"rake_cap", 3.0},
        {"starting_street", "flop"},
        {"oop_add_all_in_jam_threshold_enabled", false},
        {"oop_add_all_in_jam_threshold_pct", 0.0},
        {"ip_add_all_in_jam_threshold_enabled", false},
        {"ip_add_all_in_jam_threshold_pct", 0.0},
    };
    for (const std::string seat : {"oop", "ip"}) {
        const auto street = [&](const std::string& name, const char* bets, const char* raises) {
            const std::string prefix = seat + "_" + name;
            map[prefix + "_bet_sizes"] = bets;
            map[prefix + "_raise_sizes"] = raises;
            map[prefix + "_add_all_in"] = false;
            if (seat == "oop") map[prefix + "_dont_donk"] = false;
        };
        street("flop", "50", "50");
        street("turn", "75", "50");
        street("river", "75", "75");
    }
    return map;
}

}  // namespace kestrel_app
