#include "stimulus_commands.h"

const std::vector<StimulusCall>& stimulus_calls() {
    static const std::vector<StimulusCall> calls = [] {
        const char* const commands[] = {
            "force clock 0 0,1 10,-repeat 20",
            "force -hex data_12 0 0,F 20,A 40,3 80",
            "force enable 0 0,1 15,0 95,1 115,0 195,-cancel 400",
            "force -bin address 0000 0,0101 20,1010 40,1111 60,-repeat 80",
            "force -unsigned count 0 0,1 10,2 20,3 30,4 40,5 50,6 60,7 70,-repeat 80",
        };
        std::vector<StimulusCall> made;
        for (const char* command : commands) {
            for (const std::int32_t time : {0, 20, 35, 60, 120}) {
                made.push_back({command, time});
            }
        }
        return made;
    }();
    return calls;
}
