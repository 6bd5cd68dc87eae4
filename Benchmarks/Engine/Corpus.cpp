#include "Corpus.h"

namespace EngineBench
{

const std::vector<std::string>& TuningSentences()
{
    static const std::vector<std::string> Sentences = {
        "Who knew the blue boat would go home so soon?",
        "Please pass me the big blue map before we begin.",
        "The cat sat on a mat and ate a piece of cheese.",
        "My father bought a new boat in the summer.",
        "We will wait by the window while you go to the pool.",
        "Maybe the baby wants some more soup and a spoon.",
        "She sees the green leaves in the evening breeze.",
        "Paul made a plain cake for the party on Monday.",
        "Hot coffee and fresh bread are the best way to start.",
        "Those old roads go over the hills to the ocean.",
        "Bob put the pots and pans back on the top shelf.",
        "You should move the blue shoes into the room.",
        "A quiet rain fell on the town all afternoon.",
        "The mayor gave a brave speech about the bay.",
        "Put your boots on, the mud is deep and wet.",
        "Nobody wanted to pay for the broken phone.",
        "Mom bought a bunch of bananas at the market.",
        "Would you like to swim in the cool water with me?",
        "Each week Pete reads three or four long books.",
        "The wind blew the snow across the frozen lake.",
    };
    return Sentences;
}

const std::vector<std::string>& HeldOutSentences()
{
    static const std::vector<std::string> Sentences = {
        "Bring both boxes to the boat before noon.",
        "Do you know who wrote this beautiful poem?",
        "Peter and Mary walked home through the park.",
        "Keep the receipt, we may need it for the refund.",
        "A black dog jumped over the pump by the farm.",
        "Whose blue coat is hanging by the door?",
        "The moon rose slowly over the quiet harbour.",
        "Jim wants to go to the zoo to see the wolves.",
        "Please open the window, the room is too warm.",
        "Our team played well but lost the final game.",
        "The pilot flew the plane above the clouds.",
        "Many people move to the coast in June.",
        "Fresh fruit and cool juice make a good lunch.",
        "Sam bought a lamp and a map of the old town.",
        "We both hope the rain goes away soon.",
        "Tom drove the van past the bank and the shop.",
        "Eat your beans and peas before they get cold.",
        "Water flows from the mountain to the valley below.",
        "The baby was sleeping peacefully in her bed.",
        "Go slowly, the road is wet and the wheels may slip.",
    };
    return Sentences;
}

const std::vector<FVoice>& TuningVoices()
{
    static const std::vector<FVoice> Voices = {
        {"en-us", 175, 50}, {"en-us+f3", 160, 65}, {"en+m3", 190, 40},
        {"en+f2", 150, 55}, {"en-us+m7", 210, 35},
    };
    return Voices;
}

const std::vector<FVoice>& HeldOutVoices()
{
    static const std::vector<FVoice> Voices = {
        {"en-us", 165, 45},       {"en+f4", 180, 60},     {"en-us+m2", 145, 50},
        {"en-us+klatt", 170, 50}, {"en+klatt4", 155, 60}, {"en-us+f5", 200, 70},
    };
    return Voices;
}

} // namespace EngineBench
