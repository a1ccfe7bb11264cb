// What a host implements to have its data drawn by TXYGraph. The operations' order is the slot
// order.
#pragma once

// Takes texts from the data source. A null text is ignored.
class ITextSink {
 public:
  virtual bool Put(const char* text) = 0;

 protected:
  ~ITextSink() = default;
};

// Series and points are counted from 0. The graph asks anew for every drawing and keeps nothing; it
// does not use the results of the operations that put texts. A point with a coordinate that is not
// finite interrupts its series' line.
class IXYGraphData {
 public:
  virtual bool XTitle(ITextSink& sink) = 0;
  virtual bool YTitle(ITextSink& sink) = 0;
  virtual int Count() = 0;  // series
  virtual int Points(int series) = 0;
  virtual bool Name(int series, ITextSink& sink) = 0;
  virtual double X(int series, int point) = 0;
  virtual double Y(int series, int point) = 0;

 protected:
  ~IXYGraphData() = default;
};
