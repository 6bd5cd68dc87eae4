#!/usr/bin/env python3
"""Fits the face engine's viseme classifier.

usage: EngineFeatureDump features.csv && fit_visemes.py features.csv > VisemeWeights.inc

Multinomial logistic regression with balanced classes over the inputs that
VisemeClassifier.cpp's ClassifierInputs builds; keep the two in step.
"""
import sys

import numpy as np


def inputs(F):
    level, above, z1, z2, z3, tilt, slope, dip, low, high, zcr, voiced = F.T
    tilt = tilt / 2
    return np.stack([np.ones(len(F)), np.clip(level, -60, 10) / 10, np.clip(above, -10, 60) / 20, z1, z2, z3, tilt,
                     slope, np.clip(dip, 0, 40) / 10, low / 10, high / 10, zcr * 10, voiced, z1 * z1, z2 * z2,
                     z3 * z3, z1 * z2, z2 * z3, tilt * tilt], 1)


def main():
    data = np.loadtxt(sys.argv[1], delimiter=',')
    labels = data[:, 0].astype(int)
    X = inputs(data[:, 1:])
    classes = 6
    weights = np.zeros((X.shape[1], classes))
    balance = (len(labels) / (classes * np.bincount(labels, minlength=classes)))[labels]
    targets = np.eye(classes)[labels]
    for _ in range(3000):
        scores = X @ weights
        scores -= scores.max(1, keepdims=True)
        p = np.exp(scores)
        p /= p.sum(1, keepdims=True)
        weights -= 0.5 * (X.T @ ((p - targets) * balance[:, None]) / len(labels) + 1e-3 * weights)
    for row in weights:
        print('{' + ', '.join(f'{v:.3f}f' for v in row) + '},')


if __name__ == '__main__':
    main()
