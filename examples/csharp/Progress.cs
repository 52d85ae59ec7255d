// NOT RUN HERE. Wine's .NET does not run this example, so no test of this project does.
using System;
using System.Runtime.InteropServices;

namespace Krnqb.Example
{
    /// <summary>Prints the progress of a component's imports until it is disposed.</summary>
    public sealed class Progress : IDisposable
    {
        // The events interface __QBDataExchange and the dispid of ProgressBarChange in it.
        private static readonly Guid Events = new Guid("8A432835-FB07-45C0-8415-FA5FEE04C020");
        private const int ProgressBarChange = 4;

        private readonly object exchange;
        private readonly Action<short, string> print = Print;

        public Progress(object exchange)
        {
            this.exchange = exchange;
            ComEventsHelper.Combine(exchange, Events, ProgressBarChange, print);
        }

        public void Dispose()
        {
            ComEventsHelper.Remove(exchange, Events, ProgressBarChange, print);
        }

        private static void Print(short percent, string description)
        {
            Console.WriteLine("{0} % {1}", percent, description);
        }
    }
}
