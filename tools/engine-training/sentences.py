"""Sentences of our own for training, made from word lists with a fixed seed and
rich in the sounds the mouth shows: lips closing, open, rounded and spread vowels."""
import random

SUBJECTS = ['The old man', 'My mother', 'A tall woman', 'Our teacher', 'The baby', 'Peter', 'Maria', 'Bob',
            'The farmer', 'Your neighbour', 'Every pupil', 'The boy', 'Ruth', 'Uncle Paul', 'Three sheep',
            'The police', 'A few people', 'The mayor', 'June', 'Dave']
VERBS = ['bought', 'moved', 'painted', 'grabbed', 'dropped', 'found', 'picked up', 'washed', 'pushed',
         'needed', 'played with', 'brought back', 'made', 'keeps', 'wants', 'sees', 'stole', 'opened',
         'hid', 'counted']
OBJECTS = ['a blue balloon', 'the big map', 'some cheap beef', 'a spoon of soup', 'the broken pump',
           'two new boots', 'a box of peaches', 'the father\'s car', 'a pot of hot coffee', 'the green beans',
           'a small boat', 'the movie tickets', 'a basket of plums', 'the cool water', 'a piece of cake',
           'the mop and bucket', 'some purple paper', 'a huge moose', 'the baker\'s bread', 'an open umbrella']
PLACES = ['by the window', 'at home', 'near the pool', 'in the park', 'on the boat', 'at the bottom of the hill',
          'before noon', 'in May', 'at the market', 'under the bridge', 'by the lake', 'on Monday morning',
          'behind the barn', 'in the rain', 'at the zoo', 'down by the bay', 'after the party',
          'in the cold room', 'beside the road', 'every evening']
QUESTIONS = ['Why did', 'When will', 'Who saw', 'Would you ask', 'Do you think', 'How can']
EXTRAS = ['Please pass me the map.', 'We both hope to go home soon.', 'Maybe, but I am not sure.',
          'Oh no, not again!', 'Wow, look at that moon.', 'Yes, please.', 'Keep the peace, please.',
          'Stop! Put it back.', 'Hmm, I wonder why.', 'Mom made a bumper batch of muffins.',
          'Who knew the food would be so good?', 'Eat the peas and beans.', 'Go slowly, the road is wet.',
          'Bobby wants a big pumpkin pie.', 'The moose and the mule moved through the woods.',
          'Each evening she reads to me.', 'Pay them, they may leave today.', 'Open the box, Bob.',
          'Two blue shoes were in the room.', 'Father saw the calm sea from the balcony.']


def own_sentences(count, seed):
    rng = random.Random(seed)
    made = list(EXTRAS)
    while len(made) < count:
        if rng.random() < 0.2:
            made.append(f'{rng.choice(QUESTIONS)} {rng.choice(SUBJECTS).lower()} '
                        f'{rng.choice(["buy", "move", "find", "want", "see"])} {rng.choice(OBJECTS)}?')
        else:
            made.append(f'{rng.choice(SUBJECTS)} {rng.choice(VERBS)} {rng.choice(OBJECTS)} {rng.choice(PLACES)}.')
    return made
